#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/ui/sequence/SheetScene.h"
#include "tests/ui/sequence/WizardModel.h"
#include "tests/ui/WizardDriver.h"

/// The steps of a user in a wizard over the sheet.
class WizardSteps {
 public:
  /// The wizard has just been opened; its pages show `entries` and change them.
  WizardSteps(SheetScene& scene, WizardModel& entries);

  /// Goes through the pages, now and then back; whether the user has finished the wizard and not cancelled it.
  bool Walk();

 private:
  void UsePage();
  void UseName();
  void UseDefaults();
  void UseUserId();
  void UseService();
  void UseServerChoice();
  void UseServers(size_t first, size_t count);
  void UseServer(size_t field);
  void EnterServer(size_t field);
  void UseCopy();
  void UseSummary();

  bool GoOn();
  void Advance();

  // What cannot stand keeps the page in front, and the user is told why.
  void ExpectRefusal(const std::wstring& sentence);

  std::wstring AnyName();
  std::wstring TextOfCopied();

  Chance& Random() { return scene_.chance; }
  SheetModel& Model() { return *scene_.model; }

  SheetScene& scene_;
  WizardModel& entries_;
  WizardDriver wizard_;
  bool finished_ = false;
};
