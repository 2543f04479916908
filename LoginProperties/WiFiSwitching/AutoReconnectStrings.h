#pragma once

#define IDS_SIGNAL_STRENGTH_RANGE 1023
