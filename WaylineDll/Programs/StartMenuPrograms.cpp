#include "WaylineDll/Programs/StartMenuPrograms.h"

#include <windows.h>

#include <shlguid.h>
#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "NetUtilities/Files/IniText.h"
#include "NetUtilities/Files/KnownFolder.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Module/ComPointer.h"
#include "NetUtilities/Text/DecodeText.h"
#include "NetUtilities/Text/ErrorText.h"
#include "NetUtilities/Text/Format.h"
#include "NetUtilities/Text/IgnoringCase.h"
#include "WaylineDll/Programs/FileCheck.h"
#include "WaylineDll/Programs/ProgramRules.h"

namespace {

using std::filesystem::path;

// Asks for an interface of something; null when it is not to be had.
template <typename Interface, typename Get>
ComPointer<Interface> Obtain(HRESULT& result, const Get& get) {
  void* object = nullptr;
  result = get(__uuidof(Interface), &object);
  return ComPointer<Interface>(SUCCEEDED(result) ? static_cast<Interface*>(object) : nullptr);
}

struct LinkTarget {
  std::wstring path;
  std::wstring parameters;
};

class LinkReader {
 public:
  // To find the class takes longer than to read a link.
  LinkReader()
      : factory_(Obtain<IClassFactory>(found_, [](REFIID id, void** object) {
          return CoGetClassObject(__uuidof(ShellLink), CLSCTX_INPROC_SERVER, nullptr, id, object);
        })) {}

  std::optional<Program> Read(const path& file) {
    LinkTarget target;
    if (const HRESULT result = ReadTarget(file, target); FAILED(result)) {
      Log(LogLevel::Detail, Format(L"The link {} cannot be read", file.wstring()) + ErrorSuffix(result));
      return {};
    }
    if (target.path.empty() || !files_.IsThere(target.path)) {
      Log(LogLevel::Detail, Format(L"The link {} leads to nothing that is there: {}", file.wstring(), target.path));
      return {};
    }
    const Program::Kind kind = KindOfFile(target.path);
    return Program{.name = file.stem().wstring(),
                   .path = std::move(target.path),
                   .parameters = std::move(target.parameters),
                   .kind = kind};
  }

 private:
  HRESULT ReadTarget(const path& file, LinkTarget& target) const {
    HRESULT result = found_;
    if (!factory_) return result;
    const auto link = Obtain<IShellLinkW>(
        result, [this](REFIID id, void** object) { return factory_->CreateInstance(nullptr, id, object); });
    if (!link) return result;
    const auto stored =
        Obtain<IPersistFile>(result, [&](REFIID id, void** object) { return link->QueryInterface(id, object); });
    if (!stored) return result;
    result = stored->Load(file.c_str(), STGM_READ);
    if (FAILED(result)) return result;
    wchar_t text[MAX_PATH] = L"";
    result = link->GetPath(text, MAX_PATH, nullptr, 0);
    if (FAILED(result)) return result;
    target.path = text;
    wchar_t parameters[INFOTIPSIZE] = L"";
    result = link->GetArguments(parameters, INFOTIPSIZE);
    target.parameters = parameters;
    return result;
  }

  HRESULT found_ = S_OK;
  ComPointer<IClassFactory> factory_;
  FileCheck files_;
};

std::optional<Program> ReadWebLink(const path& file) {
  std::ifstream stream(file, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(stream), {});
  const std::wstring address = FindIniValue(DecodeText(bytes), L"InternetShortcut", L"URL").value_or(L"");
  if (!IsWebAddress(address)) {
    Log(LogLevel::Detail, Format(L"The link {} has no address of a web page: {}", file.wstring(), address));
    return {};
  }
  return Program{.name = file.stem().wstring(), .parameters = address, .kind = Program::Kind::Web};
}

void AddLinks(const std::wstring& folder, LinkReader& reader, std::vector<Program>& programs) {
  if (folder.empty()) return;
  std::error_code error;
  std::filesystem::recursive_directory_iterator entry(
      path(folder), std::filesystem::directory_options::skip_permission_denied, error);
  for (; !error && entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
    const path& file = entry->path();
    const std::wstring extension = file.extension().wstring();
    std::optional<Program> program;
    if (EqualsNoCaseAscii(extension, L".lnk")) program = reader.Read(file);
    if (EqualsNoCaseAscii(extension, L".url")) program = ReadWebLink(file);
    if (program) programs.push_back(std::move(*program));
  }
  if (error && error != std::errc::no_such_file_or_directory) {
    Log(LogLevel::Error, Format(L"The start menu cannot be read in {}", folder) + ErrorSuffix(error));
  }
}

}  // namespace

std::vector<Program> StartMenuPrograms() {
  LinkReader reader;
  std::vector<Program> programs;
  AddLinks(KnownFolder(FOLDERID_Programs, 0, L"Failed to get Programs folder"), reader, programs);
  AddLinks(KnownFolder(FOLDERID_CommonPrograms, 0, L"Failed to get Common Programs folder"), reader, programs);
  return programs;
}
