#include "Database/Profiles/ServiceInfo.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

#include "Database/Profiles/ProfileNames.h"
#include "Database/SQLite/MemberBinding.h"
#include "NetUtilities/Log.h"
#include "NetUtilities/Text/Format.h"

std::span<const ColumnBinding> ServiceRecord::GetBindings() const {
  static constexpr ColumnBinding kBindings[] = {
      BindAs<ColumnKind::Key, &ServiceRecord::serviceId>(L"ServiceId", 1),
      Bind<&ServiceRecord::name>(L"Name"),
      Bind<&ServiceRecord::displayText>(L"DisplayText"),
  };
  return kBindings;
}

bool ServiceInfo::Load(uint32_t id) {
  const uint32_t wanted = id != 0 ? id : kDefaultService;
  if (!read_) read_ = ReadServices();
  const auto found = std::ranges::find_if(
      services_, [wanted](const auto& service) { return static_cast<uint32_t>(service->serviceId) == wanted; });
  if (found == services_.end()) {
    Log(LogLevel::Error, Format(L"ServiceInfo::Load({}) Record Not Found!", wanted));
    return false;
  }
  current_ = *found;
  return true;
}

bool ServiceInfo::ReadServices() {
  SQLite sqlite;
  if (sqlite.Open() != SQLITE_OK) return false;
  decltype(services_) services;
  SQLContext context;
  int32_t result = sqlite.Execute(
      context, Format(L"select {} from {};", ColumnNames(ServiceRecord().GetBindings()), kServiceTable), {});
  for (; result == SQLITE_ROW; result = context.Step()) {
    const auto service = std::make_shared<ServiceRecord>();
    sqlite.ReadData(context, service.get());
    services.push_back(service);
  }
  if (result != SQLITE_DONE) {
    sqlite.ReportError(result);
    return false;
  }
  services_ = std::move(services);
  return true;
}
