#pragma once

#include <cstdint>

class Desktop;
class Window;

// The client size of a maximised window on the window's monitor, twips.
struct MaximisedSize {
  int32_t MaxClientWidth = 0;
  int32_t MaxClientHeight = 0;
};

MaximisedSize GetMaximisedSize(const Window& window, Desktop& desktop);
