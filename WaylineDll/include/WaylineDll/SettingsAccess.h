#pragma once

/// What the settings are opened for.
enum class SettingsAccess {
  Read,  // needs no right to write, and works while another program writes
  Edit,
};
