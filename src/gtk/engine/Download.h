#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "gtk/base/Callbacks.h"
#include "gtk/base/GObjects.h"

// One file on its way from the network to the folder for downloads. Where the object goes while it still
// runs, it ends, and nothing of it is left on the disk.
class Download : public std::enable_shared_from_this<Download> {
 public:
  enum class State { Running, Saved, Failed };

  Download(WebKitDownload* download, Callbacks::Runner runner);
  Download(const Download&) = delete;
  ~Download();

  // It has gone on by a step that is worth showing, or has come to its end.
  std::function<void()> Changed;

  State Now() const { return state_; }
  bool Running() const { return state_ == State::Running; }
  // The file; empty before there is one, and where there could be none.
  const std::string& Path() const { return path_; }
  std::string Uri() const;
  // Bytes; the length is 0 where the server doesn't tell.
  guint64 Received() const { return received_; }
  guint64 Length() const;
  // Of what is known to come: 0 to 1.
  double Share() const { return webkit_download_get_estimated_progress(download_.get()); }
  // Why it failed, to go on behind "... wasn't downloaded: ".
  const std::string& Reason() const { return reason_; }

  void Cancel();
  // Nothing is kept of it before the user has agreed: then one of the two others is called.
  void Hold() { held_ = true; }
  bool Held() const { return held_; }
  void Release();
  void Refuse(const std::string& reason);
  // The user has named the file.
  bool Named() const { return !named_.empty(); }
  // Bytes in a second since it began; 0 where that isn't known yet.
  double Speed() const;
  // Into this file, which is replaced when all has come; before anything has.
  void SaveTo(const std::string& path) { named_ = path; }

 private:
  void Begin(const std::string& suggested);
  int Reserve(const std::string& suggested);
  void Receive();
  void Finish();
  void Fail(const std::string& reason);

  Owned<WebKitDownload> download_;
  State state_ = State::Running;
  bool held_ = false;
  std::optional<std::string> suggested_;  // the name for the file, while it is held
  std::string path_, reason_;
  std::string named_;     // the file that the user named, if any
  guint64 received_ = 0;  // as told last
  Callbacks callbacks_;
};
