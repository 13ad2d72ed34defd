#pragma once

#include "platform/KeptPage.h"

class Page;

// A page with the pages before and behind it, to be kept and made again.
namespace PageHistory {

// The page as it stands, whole; fails when it is closed.
KeptPage Take(Page& page);
// What may be kept there of it. Fails where that is nothing.
KeptPage Filter(KeptPage page, KeptPage::Where where);

// Gives an unused page its history, and loads nothing. What the engine doesn't take is left out.
void Give(Page& page, const KeptPage& kept);
// Loads what a page showed to which this history was given.
void Load(Page& page, const KeptPage& kept);

}  // namespace PageHistory
