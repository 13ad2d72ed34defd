#pragma once

class BrowserWorld;

// The dialog for the browser element's own settings.
namespace InternetOptions {

// Opens it, or brings the open one to the front.
void Show(BrowserWorld& world);

}  // namespace InternetOptions
