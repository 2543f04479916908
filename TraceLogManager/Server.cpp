#include "TraceLogManager/Server.h"

#include <objbase.h>

#include <chrono>

#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Module/ComPointer.h"
#include "NetUtilities/Module/Singleton.h"
#include "TraceLogManager/DailyLogFile.h"
#include "TraceLogManager/ServerLifetime.h"
#include "TraceLogManager/TraceLogManagerObject.h"

namespace {

// A client that logs now and then finds the server running.
constexpr std::chrono::seconds kIdleTime(5);
// For a client that had reached the factory when the class was closed, and makes its object only now.
constexpr std::chrono::seconds kLastCallTime(1);

// This thread and those that COM makes for calls are the multithreaded apartment.
class ComApartment {
 public:
  ComApartment() : result_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  ~ComApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

  HRESULT Result() const { return result_; }

 private:
  HRESULT result_;
};

// Makes the clients' objects. Lives as long as the server does, whoever refers to it.
class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ServiceParts& parts) : parts_(parts) {}
  virtual ~ClassFactory() = default;
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool isKnown = id == IID_IUnknown || id == IID_IClassFactory;
    *object = isKnown ? static_cast<IClassFactory*>(this) : nullptr;
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return outer == nullptr ? TraceLogManagerObject::Create(parts_, id, object) : CLASS_E_NOAGGREGATION;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock != FALSE) {
      parts_.lifetime->Enter();
    } else {
      parts_.lifetime->Leave();
    }
    return S_OK;
  }

 private:
  ServiceParts parts_;
};

// The class is open to clients while this lives.
class RegisteredClass {
 public:
  explicit RegisteredClass(IClassFactory& factory)
      : result_(CoRegisterClassObject(CLSID_TraceLogManager, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                      &cookie_)) {}
  ~RegisteredClass() {
    if (SUCCEEDED(result_)) CoRevokeClassObject(cookie_);
  }
  RegisteredClass(const RegisteredClass&) = delete;
  RegisteredClass& operator=(const RegisteredClass&) = delete;

  HRESULT Result() const { return result_; }

 private:
  DWORD cookie_ = 0;
  HRESULT result_;
};

// While this lives COM keeps what it needs to carry calls to an interface. Otherwise that comes and goes with the
// clients, and under Wine its end sometimes waits for ever for a call that is just over.
class KeptInterface {
 public:
  KeptInterface(IUnknown& object, REFIID id) {
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) return;
    reference_.reset(stream);
    if (FAILED(CoMarshalInterface(stream, id, &object, MSHCTX_LOCAL, nullptr, MSHLFLAGS_TABLESTRONG))) {
      reference_.reset();
    }
  }
  ~KeptInterface() {
    if (!reference_) return;
    reference_->Seek({}, STREAM_SEEK_SET, nullptr);
    CoReleaseMarshalData(reference_.get());
  }
  KeptInterface(const KeptInterface&) = delete;
  KeptInterface& operator=(const KeptInterface&) = delete;

 private:
  ComPointer<IStream> reference_;
};

// Describes the service's interface, out of the type library in this program.
HRESULT LoadInterfaceDescription(ComPointer<ITypeInfo>& typeInfo) {
  const std::wstring program = Singleton<PathData>::Get()->GetExecutablePath();
  ITypeLib* loaded = nullptr;
  HRESULT result = LoadTypeLibEx(program.c_str(), REGKIND_NONE, &loaded);
  if (FAILED(result)) return result;
  const ComPointer<ITypeLib> library(loaded);
  ITypeInfo* found = nullptr;
  result = library->GetTypeInfoOfGuid(IID_ITraceLogManager, &found);
  typeInfo.reset(found);
  return result;
}

// Returns when the server is no longer needed and COM sends it no new clients.
void WaitUntilNotNeeded(ServerLifetime& lifetime) {
  for (;;) {
    // While this thread counts as a client too, COM does not close the class between two others.
    CoAddRefServerProcess();
    CoResumeClassObjects();
    lifetime.WaitUntilUnusedFor(kIdleTime);
    // A client that came since then keeps the class open.
    if (CoReleaseServerProcess() == 0) return;
  }
}

}  // namespace

HRESULT RunServer() {
  ComPointer<ITypeInfo> typeInfo;
  if (const HRESULT result = LoadInterfaceDescription(typeInfo); FAILED(result)) return result;
  DailyLogFile logFile([] { return Singleton<PathData>::Get()->GetProgramDataPath(); }, LocalDate);
  ServerLifetime lifetime;
  ClassFactory factory({logFile, &lifetime, *typeInfo});

  // Ends before all that is above: until then COM holds on to the factory.
  const ComApartment apartment;
  if (FAILED(apartment.Result())) return apartment.Result();
  void* created = nullptr;
  const HRESULT result = TraceLogManagerObject::Create({logFile, nullptr, *typeInfo}, IID_ITraceLogManager, &created);
  if (FAILED(result)) return result;
  const ComPointer<ITraceLogManager> example(static_cast<ITraceLogManager*>(created));
  const KeptInterface keptFactory(factory, IID_IClassFactory);
  const KeptInterface keptManager(*example, IID_ITraceLogManager);
  {
    const RegisteredClass registered(factory);
    if (FAILED(registered.Result())) return registered.Result();
    WaitUntilNotNeeded(lifetime);
  }
  lifetime.WaitUntilUnusedFor(kLastCallTime);
  return S_OK;
}
