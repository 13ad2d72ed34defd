#include "gtk/page/text/Sites.h"

#include <utility>

void Sites::Committed(const std::string& site) {
  site_ = site;
  frames_ = std::exchange(main_answered_, false) ? std::set<std::string>() : all_frames_;
  frames_.erase(site_);
}

void Sites::FrameAnswered(const std::string& site) {
  if (site.empty()) return;
  all_frames_.insert(site);
  if (site != site_) frames_.insert(site);
}

std::string Sites::Asker() const {
  const std::string page = site_.empty() ? "This page" : site_;
  if (frames_.empty()) return page;
  const std::string others =
      frames_.size() == 1 ? *frames_.begin() : std::to_string(frames_.size()) + " other sites";
  return page + ", or a part of it from " + others + ",";
}
