#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "Database/SQLite/SQLite.h"
#include "Database/SQLite/SQLRecord.h"

/// One network service that profiles can connect to.
class ServiceRecord : public SQLRecord {
 public:
  std::span<const ColumnBinding> GetBindings() const override;

  int32_t serviceId = 0;
  std::wstring name;         // as the client calls it
  std::wstring displayText;  // as the user reads it
};

/// The network services of the user's settings database, and the one that is looked at. Used by one thread.
class ServiceInfo {
 public:
  /// The service of profiles that name none.
  static constexpr uint32_t kDefaultService = 400;

  /// Makes the service with this id the current one; 0 means kDefaultService. False when there is none, which is
  /// logged; the current one stays. The list of services is read by the first call that can read it; a failure to read
  /// is logged. Throws as SQLiteDatabase::Open.
  bool Load(uint32_t id);

  /// The current service; null before one was found. Lives as long as this object.
  const ServiceRecord* GetService() const { return current_.get(); }

  /// What the user reads for the current service; empty before one was found.
  std::wstring GetDisplayText() const { return current_ ? current_->displayText : std::wstring(); }

 private:
  bool ReadServices();

  std::vector<std::shared_ptr<const ServiceRecord>> services_;  // in the order of the table
  bool read_ = false;
  std::shared_ptr<const ServiceRecord> current_;
};
