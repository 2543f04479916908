#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "LoginProperties/Autostart/RegAppItem.h"

/// Adds Microsoft Edge at the end unless a browser of this name is there already.
void AddEdge(std::vector<RegAppItem>& browsers);

/// Whether the identifier of a default program is a command itself, and no key of the registry.
bool IsCommand(std::wstring_view identifier);

/// The first browser whose command has `command` in it, in whatever case; empty when there is none, or `command` is.
RegAppItem FindBrowser(const std::vector<RegAppItem>& browsers, std::wstring_view command);
