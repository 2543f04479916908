#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "LoginProperties/LoginPropertiesContext.h"
#include "LoginProperties/ProfilePage/ProfileControls.h"
#include "LoginProperties/ProfilePage/ProfileSelector.h"
#include "LoginProperties/SheetResult.h"
#include "NetUtilities/Text/Utf8.h"
#include "tests/support/Endurance.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/ui/OtherConnection.h"
#include "tests/ui/SaveContext.h"
#include "tests/ui/sequence/RandomSteps.h"
#include "tests/ui/SheetDriver.h"
#include "tests/ui/StoredSheetTest.h"
#include "WaylineDll/Host.h"

/// Random steps of a user on one page of the real sheet, beside a plain model of the page: at any time the page shows
/// what the model says, and in the end the database differs from what it was in what was confirmed alone.
template <typename Model, typename PageDriver>
class PageSequence : public RandomSteps {
 protected:
  /// `settings` are statements that bring about what profiles may hold before a sheet is opened.
  PageSequence(std::wstring tab, std::vector<std::wstring> otherTabs, const char* settings)
      : tab_(std::move(tab)), otherTabs_(std::move(otherTabs)) {
    EXPECT_EQ(OpenSettings(file_), std::nullopt);
    RunSql(file_, settings);
  }
  ~PageSequence() override {
    sheet_.reset();
    CloseSettings();
  }

  /// Of the settings as they are.
  virtual Model MakeModel() = 0;

  /// Takes a step on the page and in the model, which the story tells.
  virtual void Step() = 0;

  /// The page shows what the model says.
  virtual void ExpectPage() = 0;

  /// The page is about to be left, for another tab or by OK.
  virtual void OnLeaving() {}

  /// Closes the sheet with OK, and saves.
  virtual void Confirm() {
    const std::wstring expected = folder_.File(L"Expected.db");
    ASSERT_TRUE(CopyFileW(file_.c_str(), expected.c_str(), FALSE));
    OnLeaving();
    RunSql(expected, model_->Statements());
    story_ << "OK";
    sheet_->PressOk();
    ASSERT_EQ(sheet_->Result(), kSheetConfirmed);
    sheet_.reset();
    SaveContext(context_);
    EXPECT_EQ(AllRows(file_), AllRows(expected)) << model_->Statements();
  }

  /// Opens one sheet after the other and takes some steps on each.
  void TakeSteps() {
    const int wanted = FullSize() ? 5000 : 300;
    for (int steps = 0; steps < wanted && !HasFailure(); steps += kStepsOnASheet) {
      story_.str({});
      UseSheet();
    }
  }

  void ChooseProfile() {
    const auto profiles = SelectableProfiles(context_.profiles);
    const SelectableProfile& profile = OneOf(profiles);
    story_ << "profile " << profile.id << "; ";
    sheet_->Pick(IDC_PROFILE_COMBO, profile.name);
    model_->Choose(profile.id);
    if (onPage_) model_->ShowPage();
  }

  void VisitAnotherTab() {
    const std::wstring& other = OneOf(otherTabs_);
    story_ << ToUtf8(other) << "; ";
    sheet_->SelectTab(other);
    ASSERT_EQ(sheet_->CurrentTab(), other);
    OnLeaving();
    onPage_ = false;
    if (OneIn(3)) ChooseProfile();
    if (OneIn(6)) ChooseProfile();
    story_ << ToUtf8(tab_) << "; ";
    sheet_->SelectTab(tab_);
    onPage_ = true;
    model_->ShowPage();
  }

  void ClickOverride() {
    story_ << "override; ";
    sheet_->Click(IDC_OVERRIDE_CHECK);
    model_->ClickOverride();
  }

  TemporaryFolder folder_;
  std::wstring file_ = folder_.File(L"Wayline.db");
  LoginPropertiesContext context_;
  std::optional<Model> model_;
  std::optional<SheetDriver> sheet_;
  std::optional<PageDriver> page_;

 private:
  static constexpr int kStepsOnASheet = 60;

  // Opens the sheet, takes many steps on its page and closes it, most often with OK.
  void UseSheet() {
    context_ = {};
    context_.mode = SheetMode::Full;
    ASSERT_EQ(LoadProfiles(context_.profiles), std::nullopt);
    model_.emplace(MakeModel());
    const uint32_t first = OneOf(SelectableProfiles(context_.profiles)).id;
    story_ << "on profile " << first << ": ";
    context_.currentProfile = context_.profiles.at(first);
    model_->Choose(first);
    sheet_.emplace(context_);
    page_.emplace(*sheet_);
    sheet_->SelectTab(tab_);
    model_->ShowPage();
    ExpectPage();
    for (int step = 0; step < kStepsOnASheet && !HasFailure(); ++step) {
      Step();
      if (!HasFatalFailure()) ExpectPage();
    }
    if (!HasFailure()) OneIn(4) ? Cancel() : Confirm();
  }

  void Cancel() {
    const std::multiset<std::string> before = AllRows(file_);
    story_ << "Cancel";
    sheet_->PressCancel();
    ASSERT_EQ(sheet_->Result(), kSheetCancelled);
    sheet_.reset();
    DiscardChanges();
    EXPECT_EQ(AllRows(file_), before);
  }

  std::wstring tab_;
  std::vector<std::wstring> otherTabs_;
  bool onPage_ = true;
};
