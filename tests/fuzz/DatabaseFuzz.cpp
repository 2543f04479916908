#include "tests/fuzz/DatabaseFuzz.h"

#include <fstream>

#include "Database/SQLite/SQLiteDatabaseManager.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/Require.h"

namespace {

constexpr int kMostRounds = 500;
constexpr int kStepsPerRound = 100;
constexpr int kLongestValue = 1 << 20;
constexpr size_t kCutPlaces = 16;

int rounds = 0;

// SQLite calls this for every new connection.
int Limit(sqlite3* connection, const char** /*message*/, const sqlite3_api_routines* /*routines*/) {
  sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, kLongestValue);
  sqlite3_progress_handler(
      connection, kStepsPerRound, [](void*) { return ++rounds > kMostRounds ? 1 : 0; }, nullptr);
  return SQLITE_OK;
}

}  // namespace

DatabaseFuzz::DatabaseFuzz() : file_(folder_.File(kSettingsDatabaseFile)) {
  FakeDatabasePlatform::state.userDataDirectory = folder_.Path().wstring();
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(&Limit));
}

std::string DatabaseFuzz::WriteImage(const std::string& base, const uint8_t* data, size_t size) const {
  constexpr std::string_view kMagic = "SQLite format 3";
  FuzzInput input(data, size);
  std::string image;
  if (const std::string_view bytes(reinterpret_cast<const char*>(data), size); bytes.starts_with(kMagic)) {
    image = input.Rest();
  } else {
    image = base;
    while (!input.IsAtEnd()) {
      if (image.empty()) break;
      const size_t place = input.Number<uint16_t>() % (image.size() + kCutPlaces);
      const uint8_t byte = input.Byte();
      if (place < image.size()) {
        image[place] = static_cast<char>(byte);
      } else {
        image.resize(image.size() * byte / 256);
      }
    }
  }
  Write(image);
  CountSteps();
  return image;
}

void DatabaseFuzz::Write(std::string_view bytes) const {
  std::ofstream stream(std::filesystem::path(file_), std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  Require(stream.good());
}

bool DatabaseFuzz::IsExhausted() { return rounds > kMostRounds; }

void DatabaseFuzz::CountSteps() { rounds = 0; }

void RunOnFile(const std::wstring& file, const std::string& statements) {
  sqlite3* connection = nullptr;
  sqlite3_open(ToUtf8(file).c_str(), &connection);
  Require(sqlite3_exec(connection, statements.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
  sqlite3_close(connection);
}
