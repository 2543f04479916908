#include "tests/ui/sequence/GeneralModel.h"

#include "NetUtilities/Text/Utf8.h"

GeneralModel::GeneralModel(const StoredSettings& stored) {
  constexpr int32_t kShowServers = 8;
  const auto flag = stored.bookmarks.find(kShowServers);
  showsServers = flag != stored.bookmarks.end() && flag->second == "1";
}

void GeneralModel::Show(const ProfileColumns& profile, const StoredSettings& stored) {
  constexpr int32_t kDefaultService = 400;
  account = profile.account;
  userId = profile.userId;
  const auto found = stored.services.find(profile.linkService != 0 ? profile.linkService : kDefaultService);
  service = found != stored.services.end() ? FromUtf8(found->second.at("DisplayText")) : std::wstring();
}
