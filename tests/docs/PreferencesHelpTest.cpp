// The help page of the Preferences tab names what the tab shows, and the defaults that the client comes with.

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <string>

#include "LoginProperties/Preferences/PreferenceTree.h"
#include "tests/support/FileBytes.h"
#include "tests/WaylineDll/Store/StoreTest.h"

namespace {

using testing::HasSubstr;

std::string TextOf(const char* file) { return FileBytes(std::filesystem::path(PROJECT_ROOT) / file); }

// The page without its line breaks.
const std::string& Page() {
  static const std::string page = std::regex_replace(TextOf("help/1033.html"), std::regex("\\s+"), " ");
  return page;
}

// The text of the page's strings, without blanks at its end.
std::string LabelOf(PreferenceId id) {
  static const std::string strings = TextOf("LoginProperties/Preferences/PreferenceStrings.rc");
  std::smatch text;
  if (!std::regex_search(strings, text, std::regex(" " + std::to_string(static_cast<int>(id)) + " \"([^\"]*?) *\""))) {
    ADD_FAILURE() << "no label " << static_cast<int>(id);
  }
  return text[1];
}

class PreferencesHelp : public StoreTest {
 protected:
  PreferencesHelp() {
    OpenSample();
    constexpr uint32_t kDefaults = 1;
    EXPECT_TRUE(store_.LoadPreferences(kDefaults, defaults_));
  }

  int32_t Default(PreferenceId id) const { return defaults_.at(id)->GetValue(); }

  PreferenceTable defaults_;
};

}  // namespace

TEST_F(PreferencesHelp, HasTheGroupsInTheirOrder) {
  size_t last = 0;
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    const size_t heading = Page().find("<h3>" + LabelOf(group.id) + "</h3>");
    ASSERT_NE(heading, std::string::npos) << LabelOf(group.id);
    EXPECT_GT(heading, last) << LabelOf(group.id);
    last = heading;
  }
}

TEST_F(PreferencesHelp, HasEveryCheckBoxWithItsDefault) {
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    if (group.kind == GroupKind::Choice) continue;
    for (const PreferenceEntry& entry : group.entries) {
      const std::string state = Default(entry.id) == Preference::kOn ? "on" : "off";
      EXPECT_THAT(Page(), HasSubstr("<th scope=\"row\">" + LabelOf(entry.id) + "</th><td>" + state + "</td>"));
    }
  }
}

TEST_F(PreferencesHelp, HasEveryOptionAndTheDefaultFirst) {
  for (const PreferenceGroup& group : MakePreferenceTree(true)) {
    if (group.kind != GroupKind::Choice) continue;
    EXPECT_EQ(Default(group.id), static_cast<int32_t>(group.entries.front().id));
    size_t last = Page().find("<h3>" + LabelOf(group.id));
    for (const PreferenceEntry& option : group.entries) {
      const size_t place = Page().find("<b>" + LabelOf(option.id) + "</b>", last);
      ASSERT_NE(place, std::string::npos) << LabelOf(option.id);
      last = place;
    }
  }
}
