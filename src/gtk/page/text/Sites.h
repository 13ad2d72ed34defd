#pragma once

#include <set>
#include <string>

// Which sites' documents a view shows, as the engine tells of them: those who may be the ones that ask
// something. The engine doesn't tell which frame of a page a script's question comes from, so a question
// names the page's site alone only where no other site has a frame in it.
class Sites {
 public:
  // The coming load begins; what was told of one before it that came to nothing says nothing about it.
  void LoadStarted() { main_answered_ = false; }
  // A document of a site takes the place of the one before; its site is empty where it has none.
  void Committed(const std::string& site);
  // The page's own document comes from a server, and not out of what was kept of an earlier visit.
  void MainAnswered() { main_answered_ = true; }
  // A frame gets a document of a site.
  void FrameAnswered(const std::string& site);

  // Of the page on show; empty where it has none.
  const std::string& Site() const { return site_; }
  // Who asks, to stand before "asks:" or "wants to": never a site that may not be the one.
  std::string Asker() const;

 private:
  std::string site_;
  std::set<std::string> frames_;      // of the page on show
  std::set<std::string> all_frames_;  // of all pages of the view, for those that come back with their frames
  bool main_answered_ = false;
};
