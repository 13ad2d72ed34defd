#include "gtk/start/Entry.h"

#include <glib.h>

#include <utility>

#include "gtk/start/SandboxChoice.h"

namespace {

// How long the bus may take to say what it started the program for, in microseconds.
constexpr gint64 SummonsWithin = 20 * G_USEC_PER_SEC;

}  // namespace

Entry::Entry(const CommandLine& line)
    : request_{line.new_window ? Request::What::PlainWindow : Request::What::Tab, line.address,
               TextOf(g_getenv("DESKTOP_STARTUP_ID"))},
      service_(line.service),
      driven_(line.automation) {}

Entry::Way Entry::Knock(std::chrono::milliseconds patience) try {
  if (!begun_) Begin();
  for (;;) {
    if (!hand_over_) return Way::Done;
    switch (hand_over_->Try(patience)) {
      case HandOver::Outcome::FolderIsOurs:
        hand_over_.reset();
        door_ = std::make_unique<Door>(*lock_);
        FindOut();
        return Way::Run;
      case HandOver::Outcome::NoAnswer:
        return Way::NoAnswer;
      case HandOver::Outcome::TakenOver:
        hand_over_.reset();
        if (TakeNext()) hand_over_ = std::make_unique<HandOver>(*lock_, request_);
    }
  }
} catch (const Failure& failure) {
  trouble_ = failure;
  return Way::Run;
}

void Entry::Begin() {
  begun_ = true;
  if (service_) {
    WaitForSummons();
    if (!TakeNext()) return;
  }
  folder_ = HomeFolder::Find();
  lock_ = std::make_unique<FolderLock>(folder_.path);
  hand_over_ = std::make_unique<HandOver>(*lock_, request_);
}

// Beside the start, while the toolkit comes up.
void Entry::FindOut() {
  const std::filesystem::path folder = folder_.path;
  if (!SandboxChoice::IsOff()) sandbox_ = std::make_unique<SandboxCheck>((folder / "engine").string());
  damaged_ = std::async(std::launch::async, [folder] {
    Leftovers::Clear(folder);
    return Leftovers::PutAside(folder / "engine");
  });
  // Its cache is elsewhere. Nobody waits for this.
  if (folder_.usual)
    old_cache_ = std::async(std::launch::async, [folder] { Leftovers::ClearOldCache(folder / "engine"); });
}

void Entry::WaitForSummons() {
  bus_ = std::make_unique<BusName>(BusName::Usual());
  const gint64 end = g_get_monotonic_time() + SummonsWithin;
  const guint alarm = g_timeout_add(
      SummonsWithin / 1000 + 1, +[](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  while (further_.empty() && bus_->HasBus() && g_get_monotonic_time() < end) {
    g_main_context_iteration(nullptr, TRUE);
    for (Request& request : bus_->TakeAll()) further_.push_back(std::move(request));
  }
  g_source_remove(alarm);
}

bool Entry::TakeNext() {
  // What came meanwhile is this process's to hand over as well; what comes from now on isn't.
  if (further_.empty() && bus_) {
    bus_->GiveUp();
    for (Request& request : bus_->TakeAll()) further_.push_back(std::move(request));
    bus_.reset();
  }
  if (further_.empty()) return false;
  request_ = std::move(further_.front());
  further_.pop_front();
  return true;
}

void Entry::Open(const Door::Receive& receive) {
  if (!bus_) bus_ = std::make_unique<BusName>(folder_.usual ? BusName::Usual() : BusName::Of(folder_.path));
  bus_->Open(receive, {further_.begin(), further_.end()});
  further_.clear();
  if (door_) door_->Open(receive);
}
