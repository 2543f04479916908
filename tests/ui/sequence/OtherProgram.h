#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/ui/sequence/SheetScene.h"

/// The steps of another program, which stores what it likes in the database of a sheet.
class OtherProgram {
 public:
  explicit OtherProgram(SheetScene& scene) : scene_(scene) {}

  void TakeStep();

  /// Shows all profiles that were hidden, where the user could select none otherwise.
  void ShowAllProfiles();

 private:
  void RemoveProfile();
  void AddProfile();
  void AddDefaults();
  void RenameProfile();
  void Link();
  void StoreColumn();
  void StorePreference();
  void StoreAutoStart();
  void StoreConfig();
  void StoreService();
  void StoreClientState();
  void StoreBookmark();
  void Run(const std::string& sql);

  // Ids of profiles, as texts.
  std::string AnyProfile();
  std::string AnyDefaults();

  Chance& Random() { return scene_.chance; }
  const StoredSettings& Stored() const { return scene_.stored; }

  SheetScene& scene_;
  int added_ = 0;  // makes names different
};
