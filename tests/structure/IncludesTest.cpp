// What may include what: the rooms of the code have an order, which CONTRIBUTING.md explains.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/FileBytes.h"
#include "tests/support/SourceText.h"

namespace {

using testing::IsEmpty;
using testing::SizeIs;

// Folders of LoginProperties that are no page's.
const std::vector<std::string> kShared = {"ProfilePage", "Resources"};

std::vector<std::string> Pages() {
  std::vector<std::string> pages;
  const auto root = std::filesystem::path(PROJECT_ROOT) / "LoginProperties";
  for (const auto& entry : std::filesystem::directory_iterator(root)) {
    const std::string name = entry.path().filename().string();
    if (entry.is_directory() && std::ranges::find(kShared, name) == kShared.end()) pages.push_back(name);
  }
  return pages;
}

// Written by the build, from the description of the service's interface.
constexpr std::string_view kServiceInterface = "TraceLogManager/TraceLogManager.h";

std::vector<std::string> IncludesOf(const SourceText& source) { return TextsBetween(source.code, "#include \"", "\""); }

// "FILE includes HEADER" for every include of a folder's sources that `isAllowed(header)` does not allow.
template <typename IsAllowed>
std::vector<std::string> Offences(const std::string& folder, IsAllowed isAllowed) {
  std::vector<std::string> offences;
  for (const SourceText& source : SourcesOf(folder)) {
    for (const std::string& header : IncludesOf(source)) {
      if (!isAllowed(header)) offences.push_back(source.file + " includes " + header);
    }
  }
  return offences;
}

bool IsBelow(std::string_view header, const std::string& folder) { return header.starts_with(folder + "/"); }

bool IsContract(const std::string& header) {
  return std::filesystem::exists(std::filesystem::path(PROJECT_ROOT) / "WaylineDll/include" / header);
}

// The rooms from the ground up, as they are built.
std::vector<std::string> Rooms() {
  return TextsBetween(FileBytes(std::filesystem::path(PROJECT_ROOT) / "NetUtilities/CMakeLists.txt"),
                      "add_subdirectory(", ")");
}

}  // namespace

TEST(Includes, OfARoomOfNetUtilitiesLeadToItselfAndToThoseBelowIt) {
  ASSERT_THAT(Rooms(), SizeIs(testing::Ge(6u)));
  std::vector<std::string> reachable;
  for (const std::string& room : Rooms()) {
    // What is for programs alone needs nothing but texts.
    if (room == "CommandLine") reachable = {"NetUtilities/Text"};
    reachable.push_back("NetUtilities/" + room);
    EXPECT_THAT(Offences("NetUtilities/" + room,
                         [&](const std::string& header) {
                           return header == "NetUtilities/Log.h" || (room == "Logger" && header == kServiceInterface) ||
                                  std::ranges::any_of(
                                      reachable, [&](const std::string& folder) { return IsBelow(header, folder); });
                         }),
                IsEmpty());
  }
}

TEST(Includes, OfTheCallThatLogsLeadNowhere) {
  for (const SourceText& source : SourcesOf("NetUtilities")) {
    if (source.file == "NetUtilities/Log.cpp" || source.file == "NetUtilities/Log.h") {
      EXPECT_THAT(IncludesOf(source), testing::Each("NetUtilities/Log.h"));
    }
  }
}

TEST(Includes, OfEveryFileOfNetUtilitiesAreCheckedButOfTheCallThatLogs) {
  std::vector<std::string> outside;
  for (const SourceText& source : SourcesOf("NetUtilities")) {
    const bool inARoom = std::ranges::any_of(
        Rooms(), [&](const std::string& room) { return IsBelow(source.file, "NetUtilities/" + room); });
    if (!inARoom) outside.push_back(source.file);
  }
  EXPECT_THAT(outside, testing::ElementsAre("NetUtilities/Log.cpp", "NetUtilities/Log.h"));
}

TEST(Includes, OfTheDatabaseLeadToNothingAboveIt) {
  EXPECT_THAT(Offences("Database",
                       [](const std::string& header) {
                         return IsBelow(header, "Database") || IsBelow(header, "NetUtilities");
                       }),
              IsEmpty());
}

TEST(Includes, OfTheModuleLeadToTheClientsContractAndNoFurther) {
  EXPECT_THAT(Offences("LoginProperties",
                       [](const std::string& header) {
                         return IsBelow(header, "LoginProperties") || IsBelow(header, "Database") ||
                                IsBelow(header, "NetUtilities") || IsContract(header);
                       }),
              IsEmpty());
}

TEST(Includes, OfAPageLeadToNoOtherPage) {
  const std::vector<std::string> pages = Pages();
  ASSERT_THAT(pages, SizeIs(testing::Ge(6u)));
  for (const std::string& page : pages) {
    EXPECT_THAT(Offences("LoginProperties/" + page,
                         [&](const std::string& header) {
                           return std::ranges::none_of(pages, [&](const std::string& other) {
                             return other != page && IsBelow(header, "LoginProperties/" + other);
                           });
                         }),
                IsEmpty());
  }
}

TEST(Includes, OfWhatPagesShareLeadToNoPage) {
  for (const std::string& folder : kShared) {
    EXPECT_THAT(Offences("LoginProperties/" + folder,
                         [](const std::string& header) {
                           return std::ranges::none_of(Pages(), [&](const std::string& page) {
                             return IsBelow(header, "LoginProperties/" + page);
                           });
                         }),
                IsEmpty());
  }
}

TEST(Includes, OfModulesLeadToNoCommandLine) {
  for (const char* folder : {"Database", "LoginProperties", "WaylineDll"}) {
    EXPECT_THAT(
        Offences(folder, [](const std::string& header) { return !IsBelow(header, "NetUtilities/CommandLine"); }),
        IsEmpty());
  }
}
