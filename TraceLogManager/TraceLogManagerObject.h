#pragma once

#include <windows.h>

#include <oaidl.h>

#include <atomic>

#include "TraceLogManager/DailyLogFile.h"
#include "TraceLogManager/ServerLifetime.h"
#include "TraceLogManager/TraceLogManager.h"

/// What all objects of the service share. It outlives them.
struct ServiceParts {
  DailyLogFile& logFile;
  ServerLifetime* lifetime;  // null for an object that no client has
  ITypeInfo& typeInfo;       // of ITraceLogManager
};

/// The service as one client has it. Any thread may call it.
class TraceLogManagerObject final : public ITraceLogManager {
 public:
  /// Makes an object and gives the interface `id` of it.
  static HRESULT Create(const ServiceParts& parts, REFIID id, void** object);

  TraceLogManagerObject(const TraceLogManagerObject&) = delete;
  TraceLogManagerObject& operator=(const TraceLogManagerObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  HRESULT STDMETHODCALLTYPE GetSourceCount(ULONG* count) override;
  HRESULT STDMETHODCALLTYPE GetSourceName(ULONG source, BSTR* name) override;
  HRESULT STDMETHODCALLTYPE SetGlobalLogLevel(unsigned short level) override;
  HRESULT STDMETHODCALLTYPE GetGlobalLogLevel(unsigned short* level) override;
  HRESULT STDMETHODCALLTYPE GetLogFolder(BSTR* folder) override;
  HRESULT STDMETHODCALLTYPE SetSourceLogLevel(ULONG source, unsigned short level) override;
  HRESULT STDMETHODCALLTYPE GetSourceLogLevel(ULONG source, unsigned short* level) override;
  HRESULT STDMETHODCALLTYPE GetLogFile(BSTR* file) override;
  HRESULT STDMETHODCALLTYPE LogMessage(ULONG source, unsigned short level, BSTR text) override;

 private:
  explicit TraceLogManagerObject(const ServiceParts& parts);
  ~TraceLogManagerObject();

  ServiceParts parts_;
  std::atomic<ULONG> references_{1};
};
