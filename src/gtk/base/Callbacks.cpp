#include "gtk/base/Callbacks.h"

#include <algorithm>
#include <exception>

namespace {

// Dead objects' connections are thrown away whenever so many more have come.
constexpr size_t SweepEvery = 64;

}  // namespace

struct Callbacks::Source {
  std::shared_ptr<State> state;
  std::function<void()> handler;
  bool again;
  unsigned number = 0;

  static gboolean Call(gpointer data) noexcept {
    auto* self = static_cast<Source*>(data);
    if (!self->again) std::erase(self->state->sources, self->number);
    self->state->Run(self->handler);
    return self->again ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
  }
  static void Drop(gpointer data) { delete static_cast<Source*>(data); }
};

void Callbacks::State::Run(const std::function<void()>& handler) noexcept {
  if (over) return;
  try {
    runner(handler);
  } catch (const std::exception& failure) {
    g_critical("A failure that nobody took: %s", failure.what());
  } catch (...) {
    g_critical("A failure of an unknown kind that nobody took");
  }
}

Callbacks::Callbacks(Runner runner) : state_(std::make_shared<State>()) {
  state_->runner = std::move(runner);
}

Callbacks::~Callbacks() {
  state_->over = true;
  for (const auto& connection : connections_) Disconnect(*connection);
  for (const unsigned number : std::exchange(state_->sources, {})) g_source_remove(number);
}

void Callbacks::Add(GObject* object, gulong handler) {
  if (connections_.size() % SweepEvery == SweepEvery - 1)
    std::erase_if(connections_, [](const auto& one) {
      GObject* alive = static_cast<GObject*>(g_weak_ref_get(&one->object));
      if (alive) g_object_unref(alive);
      return !alive;
    });
  connections_.push_back(std::make_unique<Connection>(object, handler));
}

void Callbacks::Disconnect(Connection& connection) {
  auto* object = static_cast<GObject*>(g_weak_ref_get(&connection.object));
  if (!object) return;
  if (g_signal_handler_is_connected(object, connection.handler))
    g_signal_handler_disconnect(object, connection.handler);
  g_object_unref(object);
}

void Callbacks::Off(gpointer object) {
  std::erase_if(connections_, [object](const auto& one) {
    auto* alive = static_cast<GObject*>(g_weak_ref_get(&one->object));
    if (alive) g_object_unref(alive);
    if (alive == object) Disconnect(*one);
    return !alive || alive == object;
  });
}

unsigned Callbacks::Attach(GSource* source, std::function<void()> handler, bool again) {
  auto* data = new Source{state_, std::move(handler), again};
  g_source_set_callback(source, Source::Call, data, Source::Drop);
  data->number = g_source_attach(source, nullptr);
  const unsigned number = data->number;
  g_source_unref(source);
  state_->sources.push_back(number);
  return number;
}

unsigned Callbacks::Later(std::function<void()> handler) {
  GSource* source = g_idle_source_new();
  // Not behind drawing: what is asked for now is to happen as soon as the handler under way has returned.
  g_source_set_priority(source, G_PRIORITY_DEFAULT);
  return Attach(source, std::move(handler), false);
}

unsigned Callbacks::After(unsigned milliseconds, std::function<void()> handler) {
  return Attach(g_timeout_source_new(milliseconds), std::move(handler), false);
}

unsigned Callbacks::Every(unsigned milliseconds, std::function<void()> handler) {
  return Attach(g_timeout_source_new(milliseconds), std::move(handler), true);
}

void Callbacks::Cancel(unsigned number) {
  if (std::erase(state_->sources, number) > 0) g_source_remove(number);
}

namespace {

struct Operation {
  std::function<void(const std::function<void()>&)> run;
  Callbacks::Ready handler;
};

}  // namespace

gpointer Callbacks::Ending(Ready handler) {
  return new Operation{[state = state_](const std::function<void()>& call) { state->Run(call); },
                       std::move(handler)};
}

void Callbacks::Ended(GObject* source, GAsyncResult* result, gpointer data) noexcept {
  const std::unique_ptr<Operation> operation(static_cast<Operation*>(data));
  operation->run([&] { operation->handler(source, result); });
}
