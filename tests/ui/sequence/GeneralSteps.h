#pragma once

#include <string>

#include "tests/ui/sequence/OtherProgram.h"
#include "tests/ui/sequence/SheetScene.h"

/// The steps of a user on the "General" page.
class GeneralSteps {
 public:
  /// The other program goes on while a wizard is open.
  GeneralSteps(SheetScene& scene, OtherProgram& other) : scene_(scene), other_(other) {}

  /// What the page shows is as the model says.
  void ExpectPage();

  void Rename();
  void Remove();

  // With wizards. The one for servers may be hidden.
  void ConfigureNetwork();
  void ConfigureServers();
  void AddNew();

 private:
  std::wstring AnyName();

  Chance& Random() { return scene_.chance; }
  SheetModel& Model() { return *scene_.model; }
  SheetDriver& Sheet() { return *scene_.sheet; }

  SheetScene& scene_;
  OtherProgram& other_;
  int named_ = 0;  // makes names different
};
