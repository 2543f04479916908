#pragma once

#define IDS_SHEET_TITLE 1037
