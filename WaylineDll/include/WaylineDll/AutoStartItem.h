#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "Database/SQLite/MemberBinding.h"
#include "Database/SQLite/SQLRecord.h"

/// What an autostart record stands for. Other values may be stored; they are carried and not shown.
enum class AutoStartRecordType : int32_t {
  PhaseHeader = 1,
  Program = 2,
};

/// One entry of a profile's autostart list: a phase header, or a program started in that phase.
class AutoStartItem : public SQLRecord {
 public:
  struct Fields {
    int32_t id = 0;  // the record's key
    int32_t profileId = 0;
    uint16_t phase = 0;  // when to start; 300 is the first phase, 1600 the last
    uint16_t order = 0;  // position within the phase from 1; 0 on a phase header
    AutoStartRecordType recordType = AutoStartRecordType::Program;
    std::wstring name;
    bool modifiable = true;  // false: set by the administrator, can be neither changed, moved nor removed
    std::wstring program;
    std::wstring parameters;
    std::wstring directory;
    std::wstring directoryRegistryKey;  // value that supplies the directory when `directory` is empty
    bool showAdvanced = false;
    int32_t initialSize = 0;       // 0 normal, 1 maximized, 2 minimized
    int32_t reconnectOption = 0;   // 0 ask, 1 do not restart, 2 always restart
    int32_t connectionOption = 0;  // 0 none, 1 disconnect, 2 prompt when the program ends
    int32_t delaySeconds = 0;
    int32_t waitMode = 0;
    bool definitionLocked = false;
  } fields;

  std::span<const ColumnBinding> GetBindings() const override {
    static constexpr ColumnBinding kBindings[] = {
        BindAs<ColumnKind::Key, &AutoStartItem::fields, &Fields::id>(L"Id"),
        Bind<&AutoStartItem::fields, &Fields::profileId>(L"ProfileId"),
        Bind<&AutoStartItem::fields, &Fields::phase>(L"Phase"),
        Bind<&AutoStartItem::fields, &Fields::order>(L"ItemOrder"),
        Bind<&AutoStartItem::fields, &Fields::recordType>(L"RecordType"),
        Bind<&AutoStartItem::fields, &Fields::name>(L"Name"),
        Bind<&AutoStartItem::fields, &Fields::modifiable>(L"Modifiable"),
        Bind<&AutoStartItem::fields, &Fields::program>(L"Program"),
        Bind<&AutoStartItem::fields, &Fields::parameters>(L"Parameters"),
        Bind<&AutoStartItem::fields, &Fields::directory>(L"Directory"),
        Bind<&AutoStartItem::fields, &Fields::directoryRegistryKey>(L"DirectoryRegistryKey"),
        Bind<&AutoStartItem::fields, &Fields::showAdvanced>(L"ShowAdvanced"),
        Bind<&AutoStartItem::fields, &Fields::initialSize>(L"InitialSize"),
        Bind<&AutoStartItem::fields, &Fields::reconnectOption>(L"ReconnectOption"),
        Bind<&AutoStartItem::fields, &Fields::connectionOption>(L"ConnectionOption"),
        Bind<&AutoStartItem::fields, &Fields::delaySeconds>(L"DelaySeconds"),
        Bind<&AutoStartItem::fields, &Fields::waitMode>(L"WaitMode"),
        Bind<&AutoStartItem::fields, &Fields::definitionLocked>(L"DefinitionLocked"),
    };
    return kBindings;
  }
};

/// Autostart records by their id.
using AutoStartTable = std::map<uint32_t, std::shared_ptr<AutoStartItem>>;
