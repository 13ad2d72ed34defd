#include "platform/Desktop.h"
