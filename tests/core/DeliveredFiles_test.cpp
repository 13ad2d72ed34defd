#include <gtest/gtest.h>

#include "core/General.h"

namespace {

TEST(DeliveredFiles, HoldEverySetting) {
  FileSlot slot;
  General general(slot);
  const std::string ini = std::string(MARLOWICK_DATA_DIR) + "/browser.ini";
  for (const char* key : {"skin", "history", "searchtab", "search", "default", "popups", "paint", "newtab",
                          "autocomplete", "cookietrap"})
    EXPECT_NE(general.ReadIniKey(ini, key), "") << key;
}

}  // namespace
