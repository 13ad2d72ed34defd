#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "platform/scene/ControlArray.h"
#include "platform/scene/Scene.h"

class frmMain;

// The art in force: one hidden store for each bitmap of a skin. A skin only overwrites what it brings along.
class Skin {
 public:
  explicit Skin(frmMain& main);

  // In the order in which a skin is loaded.
  Store picLeft{nullptr};
  Store picRight{nullptr};
  Store picBottom{nullptr};
  Store picTitleBar{nullptr};
  Store picBotRight{nullptr};
  Store picBrowserTop{nullptr};
  Store picStatusBar{nullptr};
  Store picButtonBar{nullptr};
  Store picMenuBar{nullptr};
  Store picTopLeft{nullptr};
  Store picBotLeft{nullptr};
  Store picTopRight{nullptr};
  Store picMaxButton{nullptr};
  Store picMinButton{nullptr};
  Store picCloseButton{nullptr};
  Store picMaxButtonDown{nullptr};
  Store picMinButtonDown{nullptr};
  Store picCloseButtonDown{nullptr};
  Store picMnuTopLeft{nullptr};
  Store picMnuTop{nullptr};
  Store picMnuTopRight{nullptr};
  Store picMnuRight{nullptr};
  Store picMnuBotRight{nullptr};
  Store picMnuBottom{nullptr};
  Store picMnuBotLeft{nullptr};
  Store picMnuLeft{nullptr};
  Store picMnuBack{nullptr};
  Store picMnuSpacer{nullptr};
  Store picFolder{nullptr};
  Store picLink{nullptr};
  Store picArrow{nullptr};
  Store picArrowHi{nullptr};
  Store picScroll{nullptr};
  Store picScrollUp{nullptr};
  Store picBackBut{nullptr};
  Store picForwardBut{nullptr};
  Store picStopBut{nullptr};
  Store picrefreshBut{nullptr};
  Store picNewTabBut{nullptr};
  Store picDelTabBut{nullptr};
  Store picHistoryBut{nullptr};
  Store picSearchBut{nullptr};
  Store TabLeft{nullptr};
  Store TabRight{nullptr};
  Store TabLeftHi{nullptr};
  Store TabRightHi{nullptr};
  Store picBackHiBut{nullptr};
  Store picForwardHiBut{nullptr};
  Store picStopHiBut{nullptr};
  Store picRefreshHiBut{nullptr};
  Store picNewTabHiBut{nullptr};
  Store picDelTabHiBut{nullptr};
  Store picHistoryHiBut{nullptr};
  Store picSearchHiBut{nullptr};
  Store picBackDown{nullptr};
  Store picForwardDown{nullptr};
  Store picStopDown{nullptr};
  Store picRefreshDown{nullptr};
  Store picNewTabDown{nullptr};
  Store picDelTabDown{nullptr};
  Store picHistoryDown{nullptr};
  Store picSearchDown{nullptr};
  Store picTabNotSelected{nullptr};
  Store picTabSelected{nullptr};

  // 0 to 7: the busy frames; 8: the idle picture.
  ControlArray<Store> PicStore;

  // Fills the stores, the colours and the animation from a skin folder, and the address list from its file.
  // What is missing or broken, or past the 64 megapixels of a whole skin, leaves what is there. Never fails
  // and draws nothing of the frame.
  void LoadSkin(const std::string& SkinPath);

  struct Bitmap {
    const char* File;
    Store Skin::*Surface;
  };
  static const std::array<Bitmap, 64> Bitmaps;

 private:
  void LoadAddressList();
  // A picture of the skin, or a failure where it or the skin as a whole is too large.
  Picture LoadPicture(const std::string& path);
  void LoadBitmaps(const std::string& SkinPath);
  void LoadAnimation(const std::string& SkinPath);
  void LoadColours(const std::string& SkinPath);

  frmMain& main_;
  int64_t room_ = 0;  // pixels that the pictures of the skin being loaded may still take
};
