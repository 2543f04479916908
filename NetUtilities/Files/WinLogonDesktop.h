#pragma once

/// The desktop on which users log on to Windows. Its name may be written in upper or lower case.
inline constexpr wchar_t kWinLogonDesktop[] = LR"(winsta0\winlogon)";

/// Whether the process was started on the Windows log-on desktop.
bool IsStartedOnWinLogonDesktop();

/// Whether the process runs on the Windows log-on desktop, or a test switch says so; determined once.
bool IsRunningInWinLogonDesktop();
