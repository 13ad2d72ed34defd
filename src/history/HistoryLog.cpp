#include "history/HistoryLog.h"

void HistoryLog::UpDateHistory(int16_t) {}
