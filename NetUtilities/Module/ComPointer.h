#pragma once

#include <windows.h>

#include <oleauto.h>
#include <unknwn.h>

#include "NetUtilities/Module/Owner.h"

inline void ReleaseInterface(IUnknown* object) { object->Release(); }

/// Owns one reference to a COM object.
template <typename Interface>
using ComPointer = Owner<Interface*, ReleaseInterface>;

/// Owns a text of COM's automation.
using AutomationText = Owner<OLECHAR*, SysFreeString>;
