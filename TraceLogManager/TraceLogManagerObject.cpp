#include "TraceLogManager/TraceLogManagerObject.h"

#include <new>
#include <string>

#include "NetUtilities/Log.h"
#include "TraceLogManager/LevelSettings.h"
#include "TraceLogManager/LogSources.h"

namespace {

// Runs the body of a method; no C++ exception may leave it.
template <typename Body>
HRESULT Guarded(Body body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

// Gives `text` to the caller, who frees it.
HRESULT Give(const std::wstring& text, BSTR* out) {
  *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *out == nullptr ? E_OUTOFMEMORY : S_OK;
}

// A path that could not be determined is empty.
HRESULT GivePath(const std::wstring& path, BSTR* out) {
  return path.empty() ? HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND) : Give(path, out);
}

bool IsSource(ULONG source) { return source < kLogSourceCount; }

}  // namespace

HRESULT TraceLogManagerObject::Create(const ServiceParts& parts, REFIID id, void** object) {
  auto* const created = new (std::nothrow) TraceLogManagerObject(parts);
  if (created == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = created->QueryInterface(id, object);
  created->Release();
  return result;
}

TraceLogManagerObject::TraceLogManagerObject(const ServiceParts& parts) : parts_(parts) {
  if (parts_.lifetime != nullptr) parts_.lifetime->Enter();
}

TraceLogManagerObject::~TraceLogManagerObject() {
  if (parts_.lifetime != nullptr) parts_.lifetime->Leave();
}

HRESULT TraceLogManagerObject::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  if (id != IID_IUnknown && id != IID_IDispatch && id != IID_ITraceLogManager) {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  *object = static_cast<ITraceLogManager*>(this);
  AddRef();
  return S_OK;
}

ULONG TraceLogManagerObject::AddRef() { return ++references_; }

ULONG TraceLogManagerObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT TraceLogManagerObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT TraceLogManagerObject::GetTypeInfo(UINT index, LCID, ITypeInfo** typeInfo) {
  if (typeInfo == nullptr) return E_POINTER;
  *typeInfo = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  parts_.typeInfo.AddRef();
  *typeInfo = &parts_.typeInfo;
  return S_OK;
}

HRESULT TraceLogManagerObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return DispGetIDsOfNames(&parts_.typeInfo, names, count, ids);
}

HRESULT TraceLogManagerObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                      EXCEPINFO* exception, UINT* badArgument) {
  return parts_.typeInfo.Invoke(static_cast<ITraceLogManager*>(this), id, flags, parameters, result, exception,
                                badArgument);
}

HRESULT TraceLogManagerObject::GetSourceCount(ULONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = kLogSourceCount;
  return S_OK;
}

HRESULT TraceLogManagerObject::GetSourceName(ULONG source, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  *name = nullptr;
  if (!IsSource(source)) return E_INVALIDARG;
  return Guarded([&] { return Give(SourceName(source), name); });
}

HRESULT TraceLogManagerObject::SetGlobalLogLevel(unsigned short level) {
  if (level == 0 || level > kHighestLogLevel) return E_INVALIDARG;
  return Guarded([&] { return HRESULT_FROM_WIN32(WriteGlobalLevel(level)); });
}

HRESULT TraceLogManagerObject::GetGlobalLogLevel(unsigned short* level) {
  if (level == nullptr) return E_POINTER;
  return Guarded([&] {
    *level = ReadGlobalLevel();
    return S_OK;
  });
}

HRESULT TraceLogManagerObject::GetLogFolder(BSTR* folder) {
  if (folder == nullptr) return E_POINTER;
  *folder = nullptr;
  return Guarded([&] { return GivePath(parts_.logFile.Folder(), folder); });
}

HRESULT TraceLogManagerObject::SetSourceLogLevel(ULONG source, unsigned short level) {
  if (!IsSource(source) || level > kHighestLogLevel) return E_INVALIDARG;
  return Guarded([&] { return HRESULT_FROM_WIN32(WriteSourceLevel(source, level)); });
}

HRESULT TraceLogManagerObject::GetSourceLogLevel(ULONG source, unsigned short* level) {
  if (level == nullptr) return E_POINTER;
  *level = 0;
  if (!IsSource(source)) return E_INVALIDARG;
  return Guarded([&] {
    *level = ReadSourceLevel(source);
    return S_OK;
  });
}

HRESULT TraceLogManagerObject::GetLogFile(BSTR* file) {
  if (file == nullptr) return E_POINTER;
  *file = nullptr;
  return Guarded([&] { return GivePath(parts_.logFile.Path(), file); });
}

HRESULT TraceLogManagerObject::LogMessage(ULONG source, unsigned short level, BSTR text) {
  if (!IsSource(source)) return E_INVALIDARG;
  // An empty BSTR may be null.
  const std::wstring_view view = text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
  return Guarded([&] { return parts_.logFile.Append(LogFileRecord(source, level, view)); });
}
