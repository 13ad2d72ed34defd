#include "gtk/page/text/SiteProcess.h"

namespace {

// The engine tells sites apart by their domains, whatever their schemes.
std::string DomainOf(const std::string& site) {
  const size_t mark = site.find("://");
  return mark == site.npos ? site : site.substr(mark + 3);
}

}  // namespace

void SiteProcess::Begin() {
  process_ = std::make_shared<Process>();
  tied_ = false;
}

void SiteProcess::Join(const SiteProcess& other) {
  process_ = other.process_;
  tied_ = false;
}

void SiteProcess::Tie() {
  tied_ = true;
  process_->mixed = true;
}

void SiteProcess::Came(const std::string& site) {
  if (site.empty() || tied_ || process_->site == site) return;
  const bool stays = process_->site.empty() || DomainOf(process_->site) == DomainOf(site);
  if (!stays) Begin();
  if (Shared())
    process_->mixed = true;
  else
    process_->site = site;
}

bool SiteProcess::IsFor(const std::string& site) const { return !process_->mixed && process_->site == site; }
