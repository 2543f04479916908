#include "LoginProperties/WiFiSwitching/AutoReconnectRules.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "NetUtilities/Text/Utf8.h"

void PrintTo(const ShownReconnect& shown, std::ostream* out) {
  *out << "overrides " << shown.overrides << ", automatic " << shown.automatic << ", hotspot " << shown.hotspot
       << ", prompt " << shown.prompt << ", interval '" << ToUtf8(shown.interval) << "', strength '"
       << ToUtf8(shown.strength) << "', at once " << shown.atOnce;
}

void PrintTo(const EnabledReconnect& enabled, std::ostream* out) {
  *out << "overrides " << enabled.overrides << ", automatic " << enabled.automatic << ", hotspot " << enabled.hotspot
       << ", details " << enabled.details;
}

namespace {

struct Strength {
  int32_t stored;
  const wchar_t* shown;
  bool allowed;
};
constexpr std::array<Strength, 12> kStrengths = {{
    {-10, L"-1", false},
    {-1, L"-1", false},
    {0, L"0", false},
    {9, L"9", false},
    {10, L"10", true},
    {11, L"11", true},
    {89, L"89", true},
    {90, L"90", true},
    {91, L"91", false},
    {99, L"99", false},
    {100, L"10", false},
    {std::numeric_limits<int32_t>::max(), L"21", false},
}};

struct Interval {
  int32_t stored;
  const wchar_t* shown;
};
constexpr std::array<Interval, 6> kIntervals = {{
    {0, L"0"},
    {1, L"1"},
    {9999, L"9999"},
    {-1, L"-1"},
    {std::numeric_limits<int32_t>::max(), L"214748364"},
    {std::numeric_limits<int32_t>::min(), L"-21474836"},
}};

struct Advanced {
  int32_t stored;
  bool atOnce;
};
constexpr std::array<Advanced, 4> kAdvanced = {{{0, false}, {1, true}, {2, false}, {-1, false}}};

// What a profile holds, and what the page makes of its numbers.
struct Combination {
  bool allows, overrides, automatic, hotspot, prompt;
  bool smAutomatic, smHotspot, smPrompt;
  Strength strength, smStrength;
  Interval interval, smInterval;
  Advanced advanced;

  void Fill(ProfileColumns& columns) const {
    columns.smUserMayOverrideAutoReconnectDefaults = allows;
    columns.overrideAutoReconnectDefaults = overrides;
    columns.overrideARMode = automatic;
    columns.overrideASWiFiMode = hotspot;
    columns.overridePromptUserToSwitch = prompt;
    columns.smAutoReconnectMode = smAutomatic;
    columns.smAutoSwitchWiFiMode = smHotspot;
    columns.smPromptUserToSwitch = smPrompt;
    columns.overrideSignalStrength = strength.stored;
    columns.smSignalStrength = smStrength.stored;
    columns.overrideSwitchInterval = interval.stored;
    columns.smSwitchInterval = smInterval.stored;
    columns.advancedAutoReconnectSettings = advanced.stored;
  }
};

std::ostream& operator<<(std::ostream& out, const Combination& c) {
  return out << "allows " << c.allows << ", overrides " << c.overrides << ", automatic " << c.automatic << " ("
             << c.smAutomatic << "), hotspot " << c.hotspot << " (" << c.smHotspot << "), prompt " << c.prompt << " ("
             << c.smPrompt << "), strength " << c.strength.stored << " (" << c.smStrength.stored << "), interval "
             << c.interval.stored << " (" << c.smInterval.stored << "), advanced " << c.advanced.stored;
}

// Each combination with the numbers at their edges, and the administrator's values beside them: the flags in all
// combinations, the numbers others than the user's.
template <typename Check>
void ForEachCombination(Check check) {
  Profile profile(2001);
  for (unsigned flags = 0; flags < 256; ++flags) {
    const auto flag = [flags](unsigned bit) { return (flags >> bit & 1U) != 0; };
    for (size_t strength = 0; strength < kStrengths.size(); ++strength) {
      for (size_t interval = 0; interval < kIntervals.size(); ++interval) {
        for (const Advanced& advanced : kAdvanced) {
          const Combination combination = {
              .allows = flag(0),
              .overrides = flag(1),
              .automatic = flag(2),
              .hotspot = flag(3),
              .prompt = flag(4),
              .smAutomatic = flag(5),
              .smHotspot = flag(6),
              .smPrompt = flag(7),
              .strength = kStrengths[strength],
              .smStrength = kStrengths[(strength + 3) % kStrengths.size()],
              .interval = kIntervals[interval],
              .smInterval = kIntervals[(interval + 1) % kIntervals.size()],
              .advanced = advanced,
          };
          combination.Fill(profile.Columns());
          check(combination, profile);
        }
      }
    }
  }
}

// What is expected is written as a person would go through the page, not as the rules put it.
ShownReconnect ExpectedOnThePage(const Combination& c) {
  const auto withAdministratorsDetails = [&c](bool overrides, bool automatic, bool hotspot) {
    return ShownReconnect{overrides,          automatic,          hotspot,          c.smPrompt,
                          c.smInterval.shown, c.smStrength.shown, c.advanced.atOnce};
  };
  if (!c.allows || !c.overrides) {
    if (!c.smAutomatic) return withAdministratorsDetails(false, false, false);
    return withAdministratorsDetails(false, true, c.smHotspot);
  }
  if (!c.automatic) return withAdministratorsDetails(true, false, false);
  if (!c.hotspot) return withAdministratorsDetails(true, true, false);
  return {true, true, true, c.prompt, c.interval.shown, c.strength.shown, c.advanced.atOnce};
}

EnabledReconnect ExpectedToBeEnabled(const Combination& c) {
  if (!c.allows) return {false, false, false, false};
  if (!c.overrides) return {true, false, false, false};
  if (!c.automatic) return {true, true, false, false};
  if (!c.hotspot) return {true, true, true, false};
  return {true, true, true, true};
}

// A profile whose own values are in force, in all parts.
Profile Overriding() {
  Profile profile(2001);
  ProfileColumns& columns = profile.Columns();
  columns.overrideAutoReconnectDefaults = true;
  columns.overrideARMode = true;
  columns.overrideASWiFiMode = true;
  return profile;
}

std::wstring ShownStrength(int32_t stored) {
  Profile profile = Overriding();
  profile.SetOverrideSignalStrength(stored);
  return ShownReconnectOf(profile).strength;
}

std::wstring ShownInterval(int32_t stored) {
  Profile profile = Overriding();
  profile.SetOverrideSwitchInterval(stored);
  return ShownReconnectOf(profile).interval;
}

}  // namespace

TEST(ShownReconnectOf, ShowsEveryCombinationOfSettings) {
  ForEachCombination([](const Combination& c, const Profile& profile) {
    const ShownReconnect shown = ShownReconnectOf(profile);
    if (const ShownReconnect expected = ExpectedOnThePage(c); shown != expected) {
      EXPECT_EQ(shown, expected) << c;
    }
  });
}

TEST(EnabledReconnectOf, EnablesWhatEachCombinationOfSettingsLetsTheUserChange) {
  ForEachCombination([](const Combination& c, const Profile& profile) {
    const EnabledReconnect enabled = EnabledReconnectOf(profile);
    if (const EnabledReconnect expected = ExpectedToBeEnabled(c); enabled != expected) {
      EXPECT_EQ(enabled, expected) << c;
    }
  });
}

TEST(IsStrengthAllowed, ChecksTheUsersStrengthWheneverTheUserOverrides) {
  ForEachCombination([](const Combination& c, const Profile& profile) {
    const bool expected = c.allows && c.overrides ? c.strength.allowed : true;
    if (IsStrengthAllowed(profile) != expected) ADD_FAILURE() << c;
  });
}

TEST(ShownReconnectOf, LeavesTheProfileAsItIs) {
  const Profile profile = Overriding();
  ShownReconnectOf(profile);
  EXPECT_EQ(profile.GetState(), ChangeState::Unchanged);
}

TEST(ShownReconnectOf, ANewProfileFollowsDefaultsThatSwitchNothing) {
  EXPECT_EQ(ShownReconnectOf(Profile(2001)), (ShownReconnect{false, false, false, false, L"0", L"0", false}));
  EXPECT_EQ(EnabledReconnectOf(Profile(2001)), (EnabledReconnect{true, false, false, false}));
}

TEST(ShownReconnectOf, ShowsTwoCharactersOfAStrength) {
  EXPECT_EQ(ShownStrength(7), L"7");
  EXPECT_EQ(ShownStrength(42), L"42");
  EXPECT_EQ(ShownStrength(100), L"10");
  EXPECT_EQ(ShownStrength(-5), L"-5");
  EXPECT_EQ(ShownStrength(-55), L"-5");
}

TEST(ShownReconnectOf, ShowsNineCharactersOfAnInterval) {
  EXPECT_EQ(ShownInterval(15), L"15");
  EXPECT_EQ(ShownInterval(123456789), L"123456789");
  EXPECT_EQ(ShownInterval(1234567890), L"123456789");
  EXPECT_EQ(ShownInterval(-123456789), L"-12345678");
}

TEST(StoreTyped, StoresWhatIsTyped) {
  Profile profile = Overriding();
  StoreTyped(L"20", L"50", profile);
  EXPECT_EQ(profile.GetOverrideSwitchInterval(), 20);
  EXPECT_EQ(profile.GetOverrideSignalStrength(), 50);
  StoreTyped(L"", L"9", profile);
  EXPECT_EQ(profile.GetOverrideSwitchInterval(), 0);
  EXPECT_EQ(profile.GetOverrideSignalStrength(), 9) << "allowed or not";
}

TEST(StoreTyped, StoresEachNumberByItself) {
  Profile profile = Overriding();
  profile.SetOverrideSwitchInterval(1234567890);
  profile.SetOverrideSignalStrength(100);
  StoreTyped(L"123456789", L"50", profile);
  EXPECT_EQ(profile.GetOverrideSwitchInterval(), 1234567890);
  EXPECT_EQ(profile.GetOverrideSignalStrength(), 50);
  profile.SetOverrideSignalStrength(100);
  StoreTyped(L"20", L"10", profile);
  EXPECT_EQ(profile.GetOverrideSwitchInterval(), 20);
  EXPECT_EQ(profile.GetOverrideSignalStrength(), 100);
}

TEST(StoreTyped, KeepsEveryCombinationThatIsOnlyShown) {
  ForEachCombination([](const Combination& c, const Profile& profile) {
    Profile after = profile;
    const ShownReconnect shown = ShownReconnectOf(profile);
    StoreTyped(shown.interval, shown.strength, after);
    if (after.GetOverrideSwitchInterval() != c.interval.stored ||
        after.GetOverrideSignalStrength() != c.strength.stored) {
      ADD_FAILURE() << c;
    }
  });
}

TEST(StoreTyped, StoresNothingWhileTheFieldsCannotBeChanged) {
  ForEachCombination([](const Combination& c, const Profile& profile) {
    if (EnabledReconnectOf(profile).details) return;
    Profile after = profile;
    StoreTyped(L"77", L"77", after);
    if (after.GetOverrideSwitchInterval() != c.interval.stored ||
        after.GetOverrideSignalStrength() != c.strength.stored) {
      ADD_FAILURE() << c;
    }
  });
}

TEST(ToNumber, ReadsTheDigitsThatATextBeginsWith) {
  EXPECT_EQ(ToNumber(L"0"), 0);
  EXPECT_EQ(ToNumber(L"45"), 45);
  EXPECT_EQ(ToNumber(L"0045"), 45);
  EXPECT_EQ(ToNumber(L" \t45"), 45);
  EXPECT_EQ(ToNumber(L"-5"), -5);
  EXPECT_EQ(ToNumber(L"+5"), 5);
  EXPECT_EQ(ToNumber(L"12 seconds"), 12);
  EXPECT_EQ(ToNumber(L"1x2"), 1);
}

TEST(ToNumber, TakesATextWithoutDigitsAsZero) {
  for (const wchar_t* text : {L"", L" ", L"-", L"x12"}) EXPECT_EQ(ToNumber(text), 0) << ToUtf8(text);
}

TEST(ToNumber, StopsAtTheEndsOfWhatAProfileStores) {
  EXPECT_EQ(ToNumber(L"2147483647"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ToNumber(L"2147483648"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ToNumber(std::wstring(260, L'9')), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ToNumber(L"-2147483648"), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(ToNumber(L"-2147483649"), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(ToNumber(L"-99999999999999999999"), std::numeric_limits<int32_t>::min());
}

TEST(ToNumber, ReadsBackWhatIsShown) {
  for (const int32_t number : {0, 1, 9, 10, 99, -1, -9}) {
    EXPECT_EQ(ToNumber(ShownStrength(number)), number);
    EXPECT_EQ(ToNumber(ShownInterval(number)), number);
  }
}
