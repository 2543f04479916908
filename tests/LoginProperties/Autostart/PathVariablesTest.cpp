#include "LoginProperties/Autostart/PathVariables.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Call {
  std::wstring variable;
  std::wstring value;
  bool evenWhenEmpty;
  bool operator==(const Call&) const = default;
};

constexpr VariableFolder kFolders[] = {VariableFolder::Windows, VariableFolder::Profile,  VariableFolder::System,
                                       VariableFolder::Desktop, VariableFolder::Programs, VariableFolder::ProgramFiles};

// Every variable in the two spellings, in the order of the folders.
const std::vector<std::wstring> kInDirectory = {L"%windir%",  L"%userdir%",       L"%system%",
                                                L"%desktop%", L"%startMenuProg%", L"%programFiles%"};
const std::vector<std::wstring> kInParameters = {L"%Windir%",  L"%UserDir%",       L"%System%",
                                                 L"%Desktop%", L"%StartMenuProg%", L"%ProgramFiles%"};

std::wstring FolderText(VariableFolder folder) { return L"folder " + std::to_wstring(static_cast<int>(folder)); }

class EntryPathVariables : public testing::Test {
 protected:
  std::wstring InDirectory(std::wstring text) {
    calls_.clear();
    ReplaceInDirectory(text, operations_);
    return text;
  }

  std::wstring InParameters(std::wstring text) {
    calls_.clear();
    ReplaceInParameters(text, operations_);
    return text;
  }

  std::vector<std::wstring> Replaced() const {
    std::vector<std::wstring> variables;
    for (const Call& call : calls_) variables.push_back(call.variable);
    return variables;
  }

  std::vector<Call> calls_;
  std::vector<VariableFolder> unknown_;
  VariableOperations operations_{
      [this](VariableFolder folder) {
        return std::ranges::find(unknown_, folder) == unknown_.end() ? FolderText(folder) : std::wstring();
      },
      [this](std::wstring& text, std::wstring_view variable, std::wstring_view value, bool evenWhenEmpty) {
        calls_.push_back({std::wstring(variable), std::wstring(value), evenWhenEmpty});
        if (const size_t at = text.find(variable); at != std::wstring::npos) text.replace(at, variable.size(), value);
      }};
};

}  // namespace

TEST_F(EntryPathVariables, EachIsReplacedInTheDirectoryInItsSpellingThere) {
  for (const VariableFolder folder : kFolders) {
    const std::wstring& variable = kInDirectory[static_cast<size_t>(folder)];
    EXPECT_EQ(InDirectory(variable + L"\\logs"), FolderText(folder) + L"\\logs");
    EXPECT_THAT(calls_, ElementsAre(Call{variable, FolderText(folder), false}));
  }
}

TEST_F(EntryPathVariables, EachIsReplacedInTheParametersInItsSpellingThere) {
  for (const VariableFolder folder : kFolders) {
    const std::wstring& variable = kInParameters[static_cast<size_t>(folder)];
    EXPECT_EQ(InParameters(L"/log " + variable), L"/log " + FolderText(folder));
    EXPECT_THAT(calls_, ElementsAre(Call{variable, FolderText(folder), false}));
  }
}

TEST_F(EntryPathVariables, AreLookedForWithoutRegardToTheCaseOfAsciiLetters) {
  for (size_t index = 0; index < kInDirectory.size(); ++index) {
    std::wstring upper = kInDirectory[index];
    for (wchar_t& letter : upper) {
      if (letter >= L'a' && letter <= L'z') letter = static_cast<wchar_t>(letter - L'a' + L'A');
    }
    InDirectory(upper);
    EXPECT_THAT(Replaced(), ElementsAre(kInDirectory[index]));
    InParameters(upper);
    EXPECT_THAT(Replaced(), ElementsAre(kInParameters[index]));
  }
}

TEST_F(EntryPathVariables, AreReplacedInOneOrder) {
  std::wstring backwards;
  for (const std::wstring& variable : kInDirectory) backwards.insert(0, variable);
  InDirectory(backwards);
  EXPECT_EQ(Replaced(), kInDirectory);
  InParameters(backwards);
  EXPECT_EQ(Replaced(), kInParameters);
}

TEST_F(EntryPathVariables, OfAFolderThatIsNotKnownStayInTheText) {
  for (const VariableFolder folder : kFolders) {
    unknown_ = {folder};
    const std::wstring& variable = kInDirectory[static_cast<size_t>(folder)];
    EXPECT_EQ(InDirectory(variable), variable);
    EXPECT_THAT(calls_, IsEmpty());
    EXPECT_EQ(InParameters(variable), variable);
    EXPECT_THAT(calls_, IsEmpty());
  }
}

TEST_F(EntryPathVariables, AreLeftAloneWhereThereAreNone) {
  for (const wchar_t* text : {L"", L"C:\\Tools", L"windir", L"%PATH%", L"100%"}) {
    EXPECT_EQ(InDirectory(text), text);
    EXPECT_EQ(InParameters(text), text);
    EXPECT_THAT(calls_, IsEmpty());
  }
}

TEST_F(EntryPathVariables, LeaveTheModeOfTheBrowserOutOfTheParametersFirst) {
  EXPECT_EQ(InParameters(L"%BrowserMode%https://portal %Windir%"),
            L"https://portal " + FolderText(VariableFolder::Windows));
  EXPECT_THAT(calls_, ElementsAre(Call{L"%BrowserMode%", L"", true},
                                  Call{L"%Windir%", FolderText(VariableFolder::Windows), false}));
  InParameters(L"%BROWSERMODE%");
  EXPECT_THAT(Replaced(), ElementsAre(L"%BrowserMode%"));
  InParameters(L"browsermode");
  EXPECT_THAT(Replaced(), ElementsAre(L"%BrowserMode%")) << "the word alone is enough to look";
}

TEST_F(EntryPathVariables, LeaveTheModeOfTheBrowserInADirectory) {
  EXPECT_EQ(InDirectory(L"%BrowserMode%"), L"%BrowserMode%");
  EXPECT_THAT(calls_, IsEmpty());
}
