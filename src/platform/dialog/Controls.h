#pragma once

// A dialog and all kinds of its parts.
#include "platform/dialog/Buttons.h"
#include "platform/dialog/Dialog.h"
#include "platform/dialog/FileLists.h"
#include "platform/dialog/ListBox.h"
#include "platform/dialog/TabPages.h"
#include "platform/dialog/Texts.h"
#include "platform/dialog/Tree.h"
