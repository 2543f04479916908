#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "Database/SQLite/SQLRecord.h"

/// What an autostart record stands for. Other values may be stored; they are carried and not shown.
enum class AutoStartRecordType : int32_t {
  PhaseHeader = 1,
  Program = 2,
};

/// One entry of a profile's autostart list: a phase header, or a program started in that phase.
class AutoStartItem : public SQLRecord {
 public:
  AutoStartItem() { BindColumns(); }
  AutoStartItem(const AutoStartItem& other) : SQLRecord(other), fields(other.fields) { BindColumns(); }
  AutoStartItem& operator=(const AutoStartItem& other) = default;

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

 private:
  void BindColumns() {
    Bind(L"Id", ColumnKind::Key, &fields.id);
    Bind(L"ProfileId", ColumnKind::Integer32, &fields.profileId);
    Bind(L"Phase", ColumnKind::Integer16, &fields.phase);
    Bind(L"ItemOrder", ColumnKind::Integer16, &fields.order);
    Bind(L"RecordType", ColumnKind::Integer32, &fields.recordType);
    Bind(L"Name", ColumnKind::Text, &fields.name);
    Bind(L"Modifiable", ColumnKind::Boolean, &fields.modifiable);
    Bind(L"Program", ColumnKind::Text, &fields.program);
    Bind(L"Parameters", ColumnKind::Text, &fields.parameters);
    Bind(L"Directory", ColumnKind::Text, &fields.directory);
    Bind(L"DirectoryRegistryKey", ColumnKind::Text, &fields.directoryRegistryKey);
    Bind(L"ShowAdvanced", ColumnKind::Boolean, &fields.showAdvanced);
    Bind(L"InitialSize", ColumnKind::Integer32, &fields.initialSize);
    Bind(L"ReconnectOption", ColumnKind::Integer32, &fields.reconnectOption);
    Bind(L"ConnectionOption", ColumnKind::Integer32, &fields.connectionOption);
    Bind(L"DelaySeconds", ColumnKind::Integer32, &fields.delaySeconds);
    Bind(L"WaitMode", ColumnKind::Integer32, &fields.waitMode);
    Bind(L"DefinitionLocked", ColumnKind::Boolean, &fields.definitionLocked);
  }
};

/// Autostart records by their id.
using AutoStartTable = std::map<uint32_t, std::shared_ptr<AutoStartItem>>;
