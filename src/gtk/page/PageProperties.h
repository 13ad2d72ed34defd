#pragma once

class Page;

// What is known about a page, in a small window.
namespace PageProperties {

void Show(Page& page);

}  // namespace PageProperties
