#include "skin/TileBitmapModule.h"

void TileBitmap(Surface& Destination, const Surface& Source) { Destination.Tile(Source.Picture); }

void TileBitmapForm(Window& Destination, const Surface& Source) { TileBitmap(Destination, Source); }
