#pragma once

#include <memory>
#include <string>
#include <vector>

#include "gtk/engine/Downloads.h"

// The last hundred downloads that nobody has refused, across runs, newest first. Kept in a file whenever one
// begins or ends. What others hold in Begun isn't listed before it is let go, so they listen first.
class DownloadLog : private DownloadListener {
 public:
  struct Entry {
    unsigned number = 0;       // its own for this run, never 0
    std::string address = {};  // without a user's name
    std::string path = {};     // of the file; empty where there is none
    std::string state = {};    // "saved", "failed", or "running" for what was cut off with the program
    std::string reason = {};   // why it failed
    guint64 bytes = 0;
    std::weak_ptr<Download> live = {};  // while the program knows it
  };

  // A file that can't be read is put aside, under the same name with ".damaged" behind it.
  DownloadLog(Downloads& downloads, std::string file);
  ~DownloadLog() override { downloads_.Leave(*this); }

  const std::vector<Entry>& All() const { return entries_; }
  // None where there is no such entry any more.
  const Entry* Find(unsigned number) const;
  // Forgets the entry, and begins the download anew. Does nothing where there is none.
  void Again(unsigned number);
  // Forgets all that have ended; the files stay.
  void Clear();

 private:
  void Begun(Download& download, WebKitWebView* view) override;
  void Changed(Download& download) override;
  void Forgotten(Download&) override {}
  void Add(Download& download);
  void Load();
  void Save() const;

  Downloads& downloads_;
  const std::string file_;
  std::vector<Entry> entries_;
  unsigned last_number_ = 0;
};
