#pragma once

#include <memory>
#include <string>

// The process that a page lives in, as far as the program can know it: this alone says whether two pages may
// be in one. The engine gives a page of another domain another process by itself, unless the page has opened
// windows or is one that another opened.
class SiteProcess {
 public:
  SiteProcess() { Begin(); }
  SiteProcess(const SiteProcess&) = delete;
  SiteProcess& operator=(const SiteProcess&) = delete;

  // The page goes on in a process of its own, of no site yet.
  void Begin();
  // The same in the process of another page.
  void Join(const SiteProcess& other);
  // The page stays in its process whatever site comes, and so the process is no site's from now on.
  void Tie();
  // A document of this site comes into the page. One of no site, empty, changes nothing.
  void Came(const std::string& site);

  // Nothing but pages of this site is in it.
  bool IsFor(const std::string& site) const;
  bool Tied() const { return tied_; }
  // Other pages may be in it.
  bool Shared() const { return process_.use_count() > 1; }

 private:
  struct Process {
    std::string site;    // of its first page; empty before that
    bool mixed = false;  // there may be others
  };

  std::shared_ptr<Process> process_;
  bool tied_ = false;
};
