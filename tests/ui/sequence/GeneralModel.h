#pragma once

#include <string>

#include "Database/Profiles/Profile.h"
#include "tests/ui/sequence/StoredSettings.h"

/// What the "General" page shows below the selector.
struct GeneralModel {
  /// The sheet opens.
  explicit GeneralModel(const StoredSettings& stored);

  /// The page shows a profile. Services are looked up in the database whenever it does.
  void Show(const ProfileColumns& profile, const StoredSettings& stored);

  bool showsServers = false;
  std::wstring account;
  std::wstring userId;
  std::wstring service;
};
