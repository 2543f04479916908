#pragma once

// State images of the pages' trees: a strip of cells of 16 x 16 pixels in which white is transparent. Cells 1 and 2 are
// a check box off and on, 7 and 8 a radio button off and on, the others belong to headings. An image list keeps its
// colours only when it is loaded with LR_CREATEDIBSECTION. The icons' ids are with the controls that show them.
#define IDB_STATE_IMAGES 102
