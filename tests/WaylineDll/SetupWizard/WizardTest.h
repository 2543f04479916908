#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "tests/support/TemporaryFolder.h"
#include "tests/ui/WizardDriver.h"
#include "WaylineDll/SetupWizard.h"

/// A wizard over the sample data, on a copy of its profile "Work".
class WizardTest : public testing::Test {
 protected:
  WizardTest();
  ~WizardTest() override;

  void Open(WizardId id) { wizard.emplace(id, &data); }

  /// Replaces the profile by a new one.
  void MakeNewProfile();

  /// Presses Next until the page is in front.
  void GoTo(WizardPage page);

  /// A message is shown; it is closed, and the field has the focus with its text selected.
  void ExpectRefusal(int field, const std::wstring& message);

  const ProfileColumns& Columns() const { return data.profile->Columns(); }

  TemporaryFolder folder;
  SetupWizardData_t data;
  std::optional<WizardDriver> wizard;
};
