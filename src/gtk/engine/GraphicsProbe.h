#pragma once

// True where the display draws GL with a graphics processor; false where GL is done in software or is not
// there at all. Looks at the machine each time it is called.
bool HasGraphicsProcessor();
