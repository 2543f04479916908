#pragma once

class SettingsStore;

/// The settings that the host has opened, owned by the library; null while none are.
SettingsStore* OpenStore();
