// Wayline.exe: shows the login properties sheet on a settings database and saves what the user confirms.

#include <windows.h>

#include <iostream>
#include <string>
#include <vector>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/SheetResult.h"
#include "NetUtilities/CommandLine/CommandLineProgram.h"
#include "NetUtilities/CommandLine/Utf8Console.h"
#include "NetUtilities/Files/PathData.h"
#include "NetUtilities/Logger/Logger.h"
#include "NetUtilities/Module/ComApartment.h"
#include "NetUtilities/Module/Singleton.h"
#include "NetUtilities/Text/Format.h"
#include "Wayline/FailureMessages.h"
#include "Wayline/LogServiceSetup.h"
#include "Wayline/Options.h"
#include "Wayline/ProfileChoice.h"
#include "Wayline/Report.h"
#include "Wayline/SheetModule.h"
#include "WaylineDll/ActiveProfile.h"
#include "WaylineDll/Host.h"

namespace {

// Messages can be logged while this lives; in the end all of them have been delivered, and nobody holds the service.
class Logging : LogSession {
 public:
  Logging() = default;
  ~Logging() {
    StopLibraryLog();
    StopLogger();
  }
};

// The settings database is open while this lives.
class OpenDatabase {
 public:
  OpenDatabase() = default;
  ~OpenDatabase() { CloseSettings(); }
  OpenDatabase(const OpenDatabase&) = delete;
  OpenDatabase& operator=(const OpenDatabase&) = delete;
};

// As long as there is a log.
int LogAndFail(const std::wstring& sentence) {
  Log(LogLevel::Error, sentence);
  return Fail(sentence);
}

// In a run that is to show the sheet: whoever started it with a click sees no console.
int TellAndFail(const std::wstring& sentence) {
  const int code = LogAndFail(sentence);
  TellFailure(sentence);
  return code;
}

std::wstring DefaultDatabase() {
  const std::wstring folder = Singleton<PathData>::Get()->GetUserDataDirectory();
  return folder.empty() ? folder : folder + L"\\Wayline.db";
}

int PrintProfiles(const Options& options, const ProfileTable& profiles) {
  const uint32_t activeId = GetActiveProfileIdExoprt();
  std::cout << (options.json ? ProfileListJson(profiles, activeId) : ProfileListText(profiles, activeId));
  return kSuccess;
}

// What the options say, once the settings are open.
Failure StoreValues(const Options& options) {
  if (options.connection) {
    if (Failure failure = SetConnectionState(*options.connection)) return failure;
  }
  for (const auto& [id, value] : options.bookmarks) {
    if (Failure failure = SetBookmark(Bookmark::Index{id}, value)) return failure;
  }
  return {};
}

// Only the person can say that what the sheet was closed with is not wanted any more.
Failure Save(const LoginPropertiesContext& context, SaveReport& report) {
  const SettingsTables tables = {context.profiles, context.preferences, context.autoStartItems, context.manualConfigs,
                                 context.autoConfigs};
  Failure failure =
      AttemptUntilCancelled([&] { return SaveSettings(tables, report); }, L"If you cancel, your changes are lost.");
  if (!failure) Log(LogLevel::Info, Format(L"Settings saved, records changed: {}", report.changes.size()));
  return failure;
}

int ShowSheet(const Options& options, ProfileTable profiles) {
  SheetModule module;  // outlives the records below, some of which it makes
  LoginPropertiesContext context;
  if (const Failure failure =
          ChooseProfile(profiles, options.profile, GetActiveProfileIdExoprt(), context.currentProfile)) {
    // A profile that the command line names is told as the rest of the command line is: where it was written.
    return options.profile ? LogAndFail(*failure) : TellAndFail(*failure);
  }
  if (const Failure failure = module.Load()) return TellAndFail(*failure);
  if (const Failure failure = AttemptUntilCancelled([&] { return StoreValues(options); })) return LogAndFail(*failure);
  context.resourceInstance = module.Instance();
  context.mode = options.mode;
  context.profiles = std::move(profiles);

  // The sheet's records are ours: after any other result than OK they hold edits that nobody wants, and are
  // dropped.
  const INT_PTR result = module.Show(context);
  Failure failure;
  SaveReport report;
  if (result == kSheetConfirmed) {
    failure = Save(context, report);
  } else {
    DiscardChanges();
  }
  std::cout << SheetResultJson(result, result == kSheetConfirmed && !failure, report) << std::flush;
  TellLost(report.lost);
  if (result == kSheetNotShown) return TellAndFail(L"The sheet could not be shown.");
  return failure ? LogAndFail(*failure) : kSuccess;
}

Failure Load(const Options& options, const std::wstring& file, ProfileTable& profiles) {
  if (Failure failure = OpenSettings(file, options.list ? SettingsAccess::Read : SettingsAccess::Edit)) return failure;
  return LoadProfiles(profiles);
}

int Run(const Options& options) {
  if (const Failure failure = SetUpLogService()) {
    if (!options.list) TellFailure(*failure);
    return Fail(*failure);  // nothing can be logged
  }
  const Logging logging;
  const std::wstring file = options.database.empty() ? DefaultDatabase() : options.database;
  if (file.empty()) {
    constexpr wchar_t kNoFolder[] = L"The folder of the user's settings cannot be determined.";
    return options.list ? LogAndFail(kNoFolder) : TellAndFail(kNoFolder);
  }
  const OpenDatabase database;
  ProfileTable profiles;
  const auto load = [&] { return Load(options, file, profiles); };
  const Failure failure = options.list ? load() : AttemptUntilCancelled(load);
  if (!failure) Log(LogLevel::Info, Format(L"Settings loaded from '{}'", file));
  if (failure) return LogAndFail(*failure);
  return options.list ? PrintProfiles(options, profiles) : ShowSheet(options, std::move(profiles));
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  UseLogger();
  const Utf8Console console;
  const ComApartment apartment;  // the log service and the shell need one
  const CommandLine<Options> commandLine = ParseCommandLine({arguments + 1, arguments + count});
  return AnswerOrRun(L"Wayline", commandLine.answer, [&] { return Run(commandLine.options); });
}
