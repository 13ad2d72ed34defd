#include "history/HistoryPages.h"

void HistoryPages::OpenHistory() {}
