#pragma once

class BrowserWorld;

// The dialog with the last downloads.
namespace DownloadsList {

void Show(BrowserWorld& world);

}  // namespace DownloadsList
