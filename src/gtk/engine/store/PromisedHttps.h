#pragma once

#include <string>

// Whether the host, or one above it that spoke for all below, has promised to be there by https: only, and
// the promise still holds: as the engine's store on the disk has it. A store that can't be read knows of
// none.
bool PromisedHttps(const std::string& file, const std::string& host);
