#pragma once

/// Writes a picture of the screen for the current test into the folder that the environment variable
/// PAVISE_SCREENSHOT_DIR names, with the program that PAVISE_SCREENSHOT_COMMAND names. Does nothing without them.
void TakeScreenshot();
