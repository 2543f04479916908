#pragma once

#include <gtest/gtest.h>

#include "tests/support/RegisteredService.h"
#include "tests/support/ServiceLog.h"
#include "WaylineDll/Programs.h"

/// The logging service for what the client library logs in a test. It is there until all of that has been delivered:
/// the library's thread would end the process when it finds no service.
class LibraryLogService {
 public:
  LibraryLogService() = default;
  ~LibraryLogService() {
    GetRegistryString(L"the end");  // is logged behind everything else
    EXPECT_TRUE(log_.Has("the end names no value of the registry"));
  }
  LibraryLogService(const LibraryLogService&) = delete;
  LibraryLogService& operator=(const LibraryLogService&) = delete;

  /// What the service has written into its files since the test began.
  const ServiceLog& Log() const { return log_; }

 private:
  const RegisteredService service_;
  const ServiceLog log_;
};
