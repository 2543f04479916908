// The help pages lead to each other.

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include "tests/support/FileBytes.h"

namespace {

namespace fs = std::filesystem;

const fs::path kHelp = fs::path(PROJECT_ROOT) / "help";

std::set<std::string> Pages() {
  std::set<std::string> pages;
  for (const fs::directory_entry& entry : fs::directory_iterator(kHelp)) {
    if (entry.path().extension() == ".html") pages.insert(entry.path().filename().string());
  }
  return pages;
}

std::set<std::string> LinksOf(const std::string& page) {
  const std::string text = FileBytes(kHelp / page);
  const std::regex link("href=\"([^\"]*)\"");
  std::set<std::string> links;
  for (std::sregex_iterator found(text.begin(), text.end(), link), end; found != end; ++found) {
    links.insert((*found)[1]);
  }
  return links;
}

}  // namespace

TEST(HelpPages, LinkToFilesThatExist) {
  ASSERT_FALSE(Pages().empty());
  for (const std::string& page : Pages()) {
    for (const std::string& link : LinksOf(page)) EXPECT_TRUE(fs::exists(kHelp / link)) << page << ": " << link;
  }
}

TEST(HelpPages, AreAllInTheContentsAndLeadBackThere) {
  const std::set<std::string> contents = LinksOf("index.html");
  for (const std::string& page : Pages()) {
    if (page == "index.html") continue;
    EXPECT_THAT(contents, testing::Contains(page));
    EXPECT_THAT(LinksOf(page), testing::Contains("index.html")) << page;
  }
}
