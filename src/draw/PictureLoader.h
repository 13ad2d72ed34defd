#pragma once

#include <cstdint>
#include <string>

#include "platform/scene/Bitmap.h"

// BMP, PNG and JPEG, told apart by how they begin and not by their name. No picture has transparency: the
// colours count as they stand, whatever an alpha channel says.

// The picture in a file. Fails at once for what isn't a file; see Drawing::LoadPicture.
Picture LoadPictureFile(const std::string& path, int64_t most);

// The picture compiled in as a resource of this path. Fails where there is none.
Picture LoadPictureResource(const std::string& path);
