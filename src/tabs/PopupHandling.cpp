#include "tabs/PopupHandling.h"

void PopupHandling::NewWindow2(Browser*&, bool&) {}
