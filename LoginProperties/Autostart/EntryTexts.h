#pragma once

#include <string>

#include "WaylineDll/AutoStartItem.h"

/// What is entered for an entry.
struct EntryTexts {
  std::wstring name;
  std::wstring program;
  std::wstring parameters;
  std::wstring directory;
};

enum class EntryFault { None, NameMissing, ProgramMissing };

/// The first thing that keeps an entry from being stored.
EntryFault FaultOf(const EntryTexts& texts);

/// Makes the texts those of an entry, without the blanks around them.
void StoreTexts(const EntryTexts& texts, AutoStartItem::Fields& entry);

/// The SW_... value with which an entry starts its program, for the index of its initial size, which is negative for
/// none.
int ShowCommandOf(int initialSize);

/// A program in a directory, with a separator between them; the program alone when the directory is empty.
std::wstring PathIn(std::wstring directory, const std::wstring& program);
