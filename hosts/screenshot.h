// A window's picture as a file, taken by the program that owns the window: a print system without a
// display keeps windows in memory, where only their own process can read them.
#pragma once

#include <windows.h>

#include <string>

namespace ostrel {

// Draws the window and its children anew and writes them, with the frame, as a bitmap file of 24
// bits a pixel. Throws std::runtime_error with the step that failed.
void SaveScreenshot(HWND window, const std::wstring& path);

}  // namespace ostrel
