#pragma once

// State images of the pages' trees: a strip of cells in which white is transparent. An image list keeps its colours
// only when it is loaded with LR_CREATEDIBSECTION.
#define IDB_STATE_IMAGES 102

#ifndef RC_INVOKED

/// Width and height of a cell in pixels.
inline constexpr int kStateImageSize = 16;

// The cells, by what they show. The number of a cell is that of the state image.

inline constexpr int kNoImage = 0;
inline constexpr int kCheckOffImage = 1;
inline constexpr int kCheckOnImage = 2;
inline constexpr int kCautionImage = 3;
inline constexpr int kPadlockImage = 4;
inline constexpr int kConnectionImage = 5;
inline constexpr int kRadioOffImage = 7;
inline constexpr int kRadioOnImage = 8;
inline constexpr int kQuestionImage = 9;
inline constexpr int kStartImage = 12;
inline constexpr int kGlobeImage = 13;

#endif
