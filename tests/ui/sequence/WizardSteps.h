#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/ui/sequence/OtherProgram.h"
#include "tests/ui/sequence/SheetScene.h"
#include "tests/ui/sequence/WizardModel.h"
#include "tests/ui/WizardDriver.h"

/// The steps of a user in a wizard over the sheet.
class WizardSteps {
 public:
  /// The wizard has just been opened; its pages show `entries` and change them.
  WizardSteps(SheetScene& scene, OtherProgram& other, WizardModel& entries);

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

  // What cannot stand keeps the page in front, and the user is told why, who may then give up.
  void ExpectRefusal(const std::wstring& sentence);

  std::wstring AnyName();
  std::wstring TextOfCopied();
  size_t LinesOfCopied();

  Chance& Random() { return scene_.chance; }
  SheetModel& Model() { return *scene_.model; }

  SheetScene& scene_;
  OtherProgram& other_;
  WizardModel& entries_;
  WizardDriver wizard_;
  std::vector<uint32_t> services_;  // when the wizard was opened
  bool givesUp_ = false;
  bool finished_ = false;
};
