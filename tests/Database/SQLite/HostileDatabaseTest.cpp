// Settings databases as they should not be: whatever the file holds and whoever else uses it, loading a profile ends
// with a result and its line in the log, and the file stays byte for byte as it was.

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Database/Profiles/Profiles.h"
#include "Database/SQLite/MemberBinding.h"
#include "Database/SQLite/SQLiteHandles.h"
#include "NetUtilities/Text/Format.h"
#include "tests/Database/SQLite/UserDatabase.h"
#include "tests/support/Endurance.h"
#include "tests/support/FileBytes.h"
#include "tests/support/LogCapture.h"
#include "tests/support/OwnProcess.h"

using testing::AllOf;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

constexpr char kNoTable[] = "1 - SQL logic error";
constexpr char kBusy[] = "5 - database is locked";
constexpr char kCorrupt[] = "11 - database disk image is malformed";
constexpr char kNoDatabase[] = "26 - file is not a database";

constexpr wchar_t kList[] = L"SQLite::GetHierarchicalList(";
constexpr wchar_t kLoad[] = L"SQLite::LoadHierarchical(";

// Loading a profile of the sample takes some hundred steps of SQLite's.
constexpr int kEnoughSteps = 5000;

// A connection of somebody else.
ConnectionHandle Connect(const std::wstring& file, const char* statements) {
  sqlite3* opened = nullptr;
  sqlite3_open(ToUtf8(file).c_str(), &opened);
  EXPECT_EQ(sqlite3_exec(opened, statements, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(opened);
  return ConnectionHandle(opened);
}

class HostileDatabaseTest : public testing::Test {
 protected:
  // Profile 1 is a root, 2 is linked to it. Small pages, so that there are several.
  void MakeSample(const std::string& before = {}) const {
    database_.Run("pragma page_size = 512; " + before + "; create table Profiles (" +
                  ToUtf8(ColumnNames(profile_.GetBindings())) +
                  ", primary key (ProfileId)); insert into Profiles (ProfileId, Name, Account, HelpdeskText) "
                  "values (1, 'root', 'Example', '" +
                  std::string(700, 'h') +
                  "'); insert into Profiles (ProfileId, Name, LinkProfile) values (2, 'leaf', 1)");
  }

  void Write(const std::string& bytes) const {
    std::ofstream(std::filesystem::path(database_.File()), std::ios::binary) << bytes;
  }

  std::string Bytes() const { return FileBytes(database_.File()); }

  std::vector<std::string> FilesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(database_.Folder())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  // The file as it is now can be opened, also after another one with its name was closed.
  bool Reopen() const {
    const auto shared = database_.Shared();
    return shared->Open(false, database_.File()) == SQLITE_OK;
  }

  std::vector<std::wstring> NewErrors() {
    std::vector<std::wstring> lines;
    for (; seen_ < log_.Messages().size(); ++seen_) {
      const LogCapture::Message& message = log_.Messages()[seen_];
      EXPECT_EQ(message.source, LogSource::General);
      if (message.level == LogLevel::Error) {
        lines.push_back(message.text);
      } else {
        EXPECT_EQ(message.text, L"Can't cleanup context: out of memory");
      }
    }
    return lines;
  }

  void LoadSucceeds(uint32_t id) {
    EXPECT_TRUE(profiles_.LoadProfileById(id, profile_));
    EXPECT_THAT(NewErrors(), IsEmpty());
    EXPECT_EQ(profile_.GetProfileId(), id);
    EXPECT_EQ(profile_.GetAccount(), L"Example");
  }

  // Loading profile 2 fails in `operation` with this code and text.
  void LoadFails(const wchar_t* operation, const char* reason) {
    EXPECT_FALSE(profiles_.LoadProfileById(2, profile_));
    const std::wstring end = FromUtf8(" Error: " + std::string(reason) + " - ") + L"select ";
    const auto line = [&end](const wchar_t* name) {
      return AllOf(StartsWith(L"SQLite: "), HasSubstr(name + std::wstring()), HasSubstr(end));
    };
    EXPECT_THAT(NewErrors(), ElementsAre(line(operation), line(L"Profiles::LoadProfileById(")));
  }

  // As above, for a file that stays as it is; what was open is closed.
  void RefusesTheFile(const wchar_t* operation, const char* reason) {
    const std::string before = Bytes();
    LoadFails(operation, reason);
    database_.Shared()->Close();
    EXPECT_EQ(Bytes(), before);
    EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
  }

  // Loads profile 2 from a file with these bytes, whatever they are; the result's code, 101 if it was loaded.
  int LoadFrom(const std::string& bytes) {
    Write(bytes);
    int code = SQLITE_CANTOPEN;
    if (Reopen()) {
      // Links that were damaged can have no end. Their statements are short: every step counts.
      steps_ = 0;
      sqlite3_progress_handler(
          database_.Shared()->GetConnection(), 1,
          [](void* steps) { return ++*static_cast<int*>(steps) > kEnoughSteps ? 1 : 0; }, &steps_);
      const bool loaded = profiles_.LoadProfileById(2, profile_);
      const std::vector<std::wstring> lines = NewErrors();
      code = SQLITE_DONE;
      EXPECT_EQ(lines.size(), loaded ? 0u : 2u);
      for (const std::wstring& line : lines) {
        const std::wstring before = L") Error: ";
        const size_t at = line.find(before);
        EXPECT_THAT(line, AllOf(StartsWith(L"SQLite: "), HasSubstr(before), HasSubstr(L" - select ")));
        code = at != std::wstring::npos ? std::stoi(line.substr(at + before.size())) & 0xFF : 0;
      }
      database_.Shared()->Close();
    } else {
      EXPECT_THAT(NewErrors(), ElementsAre(StartsWith(L"Can't open database ")));
    }
    EXPECT_EQ(Bytes(), bytes);
    return code;
  }

  LogCapture log_;
  size_t seen_ = 0;
  UserDatabase database_;
  Profiles profiles_;
  Profile profile_{0};
  int steps_ = 0;
};

}  // namespace

// Damaged files

TEST_F(HostileDatabaseTest, AnEmptyFileHasNoTable) {
  Write("");
  RefusesTheFile(kList, kNoTable);
}

TEST_F(HostileDatabaseTest, AFileWithAnotherHeaderIsNoDatabase) {
  for (const std::string& bytes : {std::string(99, '\0'), std::string(5000, 'x'),
                                   "SQLite format 4" + std::string(5000, '\0'), std::string(1 << 20, '\xff')}) {
    SCOPED_TRACE(bytes.size());
    Write(bytes);
    ASSERT_TRUE(Reopen());
    RefusesTheFile(kList, kNoDatabase);
  }
}

TEST_F(HostileDatabaseTest, AFileThatEndsAfterItsFirstPageIsDamaged) {
  MakeSample();
  Write(Bytes().substr(0, 512));
  RefusesTheFile(kList, kCorrupt);
}

TEST_F(HostileDatabaseTest, ATruncatedFileIsRefusedOrRead) {
  MakeSample();
  const std::string whole = Bytes();
  ASSERT_GT(whole.size(), 2000u);
  ASSERT_EQ(LoadFrom(whole), SQLITE_DONE);
  const size_t step = FullSize() ? 1 : 67;
  for (size_t size = 0; size < whole.size(); size += step) {
    // A last page that is cut off is filled up, or is an error of the system.
    EXPECT_THAT(LoadFrom(whole.substr(0, size)),
                AnyOf(SQLITE_DONE, SQLITE_ERROR, SQLITE_IOERR, SQLITE_CORRUPT, SQLITE_NOTADB))
        << size << " bytes";
  }
}

TEST_F(HostileDatabaseTest, AFileWithAFlippedBitIsRefusedOrRead) {
  MakeSample();
  const std::string whole = Bytes();
  const unsigned seed = std::random_device()();
  std::cout << "seed " << seed << '\n';
  std::mt19937 random(seed);
  const size_t bits = whole.size() * 8;
  for (size_t bit = 0; bit < bits; bit += FullSize() ? 1 : 1 + random() % 211) {
    std::string bytes = whole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    EXPECT_THAT(LoadFrom(bytes), AnyOf(SQLITE_DONE, SQLITE_ERROR, SQLITE_NOMEM, SQLITE_INTERRUPT, SQLITE_CORRUPT,
                                       SQLITE_CANTOPEN, SQLITE_TOOBIG, SQLITE_NOTADB))
        << "bit " << bit;
    if (HasFailure()) break;
  }
}

TEST_F(HostileDatabaseTest, PagesOfNoiseAreRefusedOrRead) {
  MakeSample();
  const std::string whole = Bytes();
  const unsigned seed = std::random_device()();
  std::cout << "seed " << seed << '\n';
  std::mt19937 random(seed);
  for (int round = FullSize() ? 5000 : 50; round > 0 && !HasFailure(); --round) {
    std::string bytes = whole;
    const size_t start = 100 + random() % (whole.size() - 100);
    const size_t end = std::min<size_t>(whole.size(), start + random() % 600);
    for (size_t at = start; at < end; ++at) bytes[at] = static_cast<char>(random());
    EXPECT_THAT(LoadFrom(bytes),
                AnyOf(SQLITE_DONE, SQLITE_ERROR, SQLITE_NOMEM, SQLITE_INTERRUPT, SQLITE_CORRUPT, SQLITE_TOOBIG));
  }
}

// Other tables

TEST_F(HostileDatabaseTest, RefusesADatabaseWithoutTheTable) {
  database_.Run("create table Songs (Title)");
  RefusesTheFile(kList, kNoTable);
}

TEST_F(HostileDatabaseTest, RefusesATableThatLacksAColumn) {
  for (const ColumnBinding& column : profile_.GetBindings()) {
    std::string columns = ToUtf8(ColumnNames(profile_.GetBindings())) + ", ";
    const std::string name = ToUtf8(column.name) + ", ";
    columns.replace((", " + columns).find(", " + name), name.size(), "");
    database_.Run("drop table if exists Profiles; create table Profiles (" + columns + "Other)");
    if (name == "ProfileId, " || name == "LinkProfile, ") {
      ASSERT_TRUE(Reopen());
      RefusesTheFile(kList, kNoTable);
    } else {
      database_.Run("insert into Profiles (ProfileId) values (2)");
      ASSERT_TRUE(Reopen());
      RefusesTheFile(kLoad, kNoTable);
    }
  }
}

TEST_F(HostileDatabaseTest, TakesNoNoticeOfOtherColumnsAndTheirOrder) {
  database_.Run("create table Profiles (Other default 7, " + ToUtf8(ColumnNames(profile_.GetBindings())) +
                ", More); insert into Profiles (LinkProfile, Account, ProfileId) values (0, 'Example', 2)");
  LoadSucceeds(2);
}

TEST_F(HostileDatabaseTest, ReadsAViewAsItReadsATable) {
  MakeSample("pragma user_version = 1");
  database_.Run("alter table Profiles rename to Stored; create view Profiles as select * from Stored");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), L"leaf");
}

TEST_F(HostileDatabaseTest, ReportsAViewThatFails) {
  MakeSample();
  database_.Run("alter table Profiles rename to Stored; create view Profiles as select * from Missing");
  RefusesTheFile(kList, kNoTable);
  database_.Run("drop view Profiles; create view Profiles as select * from Stored where abs(-9223372036854775808)");
  ASSERT_TRUE(Reopen());
  RefusesTheFile(kList, kNoTable);
}

TEST_F(HostileDatabaseTest, RefusesAnIdThatTwoRowsHave) {
  database_.Run("create table Profiles (" + ToUtf8(ColumnNames(profile_.GetBindings())) +
                "); insert into Profiles (ProfileId, LinkProfile) values (2, 0), (2, 0)");
  RefusesTheFile(kLoad, "100 - another row available");
}

// Values

TEST_F(HostileDatabaseTest, ReadsValuesOfAMegabyte) {
  constexpr size_t kMegabyte = 1 << 20;
  MakeSample();
  database_.Run(
      "update Profiles set Name = printf('%.*c', 1048576, 'n'), WarnTime = printf('%.*c', 1048576, '7'), "
      "DurationTime = zeroblob(1048576), DNS1Setting = printf('%.*c', 1048576, 'd'), "
      "DefaultProxy = printf('%.*c', 1048576, ' '), Domain = zeroblob(1048576) where ProfileId = 2");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), std::wstring(kMegabyte, L'n'));
  EXPECT_EQ(profile_.Columns().warnTime, -1) << "the largest 64-bit number, truncated";
  EXPECT_EQ(profile_.Columns().durationTime, 0);
  EXPECT_EQ(profile_.Columns().dns1Setting, L'd');
  EXPECT_FALSE(profile_.GetDefaultProxy());
  EXPECT_EQ(profile_.Columns().domain, std::wstring(kMegabyte, L'\0'));
}

TEST_F(HostileDatabaseTest, ReplacesWhatIsNoUtf8) {
  MakeSample();
  database_.Run(
      "update Profiles set Name = cast(x'61ff62' as text), Domain = cast(x'c3' as text), "
      "WarnTime = cast(x'3132ff33' as text), DNS1Setting = cast(x'ff' as text), "
      "CertIdOID = cast(x'f0808080edA080f7bfbfbf' as text) where ProfileId = 2");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(),
            L"a\xfffd"
            L"b");
  EXPECT_EQ(profile_.Columns().warnTime, 12);
  EXPECT_EQ(static_cast<uint32_t>(profile_.Columns().dns1Setting), 0xFFFDu);
  EXPECT_THAT(profile_.Columns().domain, SizeIs(1));
}

TEST_F(HostileDatabaseTest, KeepsBytesThatAreNoUtf8InNarrowText) {
  struct Narrow : SQLRecord {
    std::string bytes;

    std::span<const ColumnBinding> GetBindings() const override {
      static constexpr ColumnBinding kBindings[] = {Bind<&Narrow::bytes>(L"Bytes")};
      return kBindings;
    }
  } record;
  database_.Run("create table Narrow (Bytes); insert into Narrow values (cast(x'61ff00c3' as text))");
  SQLite sqlite;
  ASSERT_EQ(sqlite.Open(), SQLITE_OK);
  SQLContext context;
  ASSERT_EQ(sqlite.Execute(context, L"select Bytes from Narrow;", {}), SQLITE_ROW);
  sqlite.ReadData(context, &record);
  EXPECT_EQ(record.bytes, std::string("a\xff\0\xc3", 4));
}

TEST_F(HostileDatabaseTest, CarriesWhatIsNoUtf16) {
  MakeSample("pragma encoding = 'UTF-16le'");
  // A high surrogate alone, a low one alone, half a unit, and half a unit alone.
  database_.Run(
      "update Profiles set Name = cast(x'61003dd86200' as text), Domain = cast(x'a1dc' as text), "
      "UserId = cast(x'610062' as text), HelpURL = cast(x'61' as text), "
      "DNS1Setting = cast(x'3dd8' as text), WarnTime = cast(x'310032' as text) where ProfileId = 2");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), (std::wstring{L'a', wchar_t{0xD83D}, L'b'}));
  EXPECT_EQ(profile_.Columns().domain, std::wstring(1, wchar_t{0xDCA1}));
  EXPECT_EQ(profile_.GetUserId(), L"a");
  EXPECT_EQ(profile_.Columns().helpUrl, L"");
  EXPECT_EQ(static_cast<uint32_t>(profile_.Columns().dns1Setting), 0xD83Du);
  EXPECT_EQ(profile_.Columns().warnTime, 1);
}

TEST_F(HostileDatabaseTest, ReadsADatabaseInTheOtherByteOrder) {
  MakeSample("pragma encoding = 'UTF-16be'");
  database_.Run("update Profiles set Name = 'Z\xc3\xbcrich', UserId = cast(x'006100' as text) where ProfileId = 2");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), L"Z\u00fcrich");
  EXPECT_THAT(profile_.GetUserId(), StartsWith(L"a"));
}

// Other users of the file

TEST_F(HostileDatabaseTest, ReportsALockedDatabaseAndReadsItLater) {
  MakeSample();
  const std::string before = Bytes();
  {
    const ConnectionHandle other = Connect(database_.File(), "begin exclusive");
    LoadFails(kList, kBusy);
    LoadFails(kList, kBusy);
  }
  LoadSucceeds(2);
  {
    const ConnectionHandle other = Connect(database_.File(), "begin exclusive");
    LoadFails(kList, kBusy);  // now in the step: the statement can be prepared
  }
  LoadSucceeds(2);
  database_.Shared()->Close();
  EXPECT_EQ(Bytes(), before);
}

TEST_F(HostileDatabaseTest, ReadsWhileAnotherPreparesToWrite) {
  MakeSample();
  const ConnectionHandle other = Connect(database_.File(), "begin immediate; update Profiles set Account = 'Changed'");
  LoadSucceeds(2);
}

TEST_F(HostileDatabaseTest, ReportsADatabaseThatAnotherProcessLocks) {
  MakeSample();
  ConnectionHandle lock;
  if (!IsOwnProcess()) lock = Connect(database_.File(), "begin exclusive");
  InOwnProcess(
      [this] {
        FakeDatabasePlatform::state.userDataDirectory = FromUtf8(OwnProcessNote());
        EXPECT_FALSE(profiles_.LoadProfileById(2, profile_));
        EXPECT_THAT(NewErrors(), AllOf(SizeIs(2), Each(HasSubstr(L" Error: 5 - database is locked - select "))));
      },
      {.note = ToUtf8(database_.Folder().wstring())});
}

TEST_F(HostileDatabaseTest, DoesNotOpenAFileThatDisappearsFirst) {
  MakeSample();
  static std::filesystem::path file;
  file = database_.File();
  // What the layer asks for between looking for the file and opening it.
  databasePlatform.createInstanceMutex = [](const std::wstring&) {
    std::filesystem::remove(file);
    return InstanceMutex{};
  };
  EXPECT_FALSE(profiles_.LoadProfileById(2, profile_));
  EXPECT_THAT(NewErrors(),
              ElementsAre(Format(L"Can't open database {}: 14 - unable to open database file", database_.File())));
  EXPECT_THAT(FilesInFolder(), IsEmpty());
}

TEST_F(HostileDatabaseTest, DoesNotBringBackAFileThatDisappearsAfterOpening) {
  MakeSample();
  ASSERT_TRUE(Reopen());
  std::error_code error;
  if (!std::filesystem::remove(std::filesystem::path(database_.File()), error)) {
    GTEST_SKIP() << "the system keeps files that are open";
  }
  LoadSucceeds(2);
  database_.Shared()->Close();
  EXPECT_THAT(FilesInFolder(), IsEmpty());
}

TEST_F(HostileDatabaseTest, ReportsAFileThatIsEmptiedAfterOpening) {
  MakeSample();
  ASSERT_TRUE(Reopen());
  Write("");
  RefusesTheFile(kList, kNoTable);
}

TEST_F(HostileDatabaseTest, ReportsAFileThatIsOverwrittenAfterOpening) {
  MakeSample();
  ASSERT_TRUE(Reopen());
  Write(std::string(Bytes().size(), 'x'));
  RefusesTheFile(kList, kNoDatabase);
}

// A write-ahead log

TEST_F(HostileDatabaseTest, LeavesADatabaseWithAWriteAheadLogAsItIs) {
  MakeSample("pragma journal_mode = wal");
  const std::string before = Bytes();
  LoadSucceeds(2);
  database_.Shared()->Close();
  EXPECT_EQ(Bytes(), before);
  EXPECT_THAT(FilesInFolder(), ElementsAre("Wayline.db"));
}

TEST_F(HostileDatabaseTest, ReadsWhatStandsInTheWriteAheadLog) {
  MakeSample("pragma journal_mode = wal");
  const ConnectionHandle other = Connect(database_.File(),
                                         "update Profiles set Name = 'committed' where ProfileId = 2; "
                                         "begin immediate; update Profiles set Name = 'open' where ProfileId = 2");
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), L"committed");
  EXPECT_EQ(sqlite3_exec(other.get(), "commit", nullptr, nullptr, nullptr), SQLITE_OK);
  LoadSucceeds(2);
  EXPECT_EQ(profile_.GetName(), L"open");
  const std::string before = Bytes();
  database_.Shared()->Close();
  EXPECT_EQ(Bytes(), before) << "the other one is still using it";
}

TEST_F(HostileDatabaseTest, TakesNoNoticeOfNoiseInPlaceOfALog) {
  std::mt19937 random(1);
  std::string noise(5000, ' ');
  for (char& byte : noise) byte = static_cast<char>(random());
  MakeSample("pragma journal_mode = wal");
  const std::string before = Bytes();
  std::ofstream(database_.Folder() / "Wayline.db-wal", std::ios::binary) << noise;
  LoadSucceeds(2);
  database_.Shared()->Close();
  EXPECT_EQ(Bytes(), before);
}
