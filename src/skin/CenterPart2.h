#pragma once

class Window;
struct ScreenRect;

// Moves a window into the middle of a work area, 60 twips left of and above it. The size doesn't change.
void CenterForm(Window& window, const ScreenRect& area);
