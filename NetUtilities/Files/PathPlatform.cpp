#include "NetUtilities/Files/PathPlatform.h"

PathPlatform pathPlatform;
