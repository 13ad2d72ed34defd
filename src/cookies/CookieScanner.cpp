#include "cookies/CookieScanner.h"

void CookieScanner::GetCookies() {}
void CookieScanner::CleanUp() {}
