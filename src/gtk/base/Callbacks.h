#pragma once

#include <gio/gio.h>

#include <exception>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

// The one way in for what the C libraries call: the signals, idles, timeouts and asynchronous ends that one
// owner listens to. They end with this object, so it is the owner's last member: nothing is called any more
// while the rest comes down. No failure of a handler gets back into a C frame.
class Callbacks {
 public:
  // Runs one handler, keeps alive what it needs meanwhile, and decides what becomes of a failure that the
  // handler lets go. Lets nothing out itself.
  using Runner = std::function<void(const std::function<void()>& handler)>;

  // Without a runner a handler runs as it is, and what it lets go is logged.
  Callbacks() : Callbacks([](const std::function<void()>& handler) { handler(); }) {}
  explicit Callbacks(Runner runner);
  Callbacks(const Callbacks&) = delete;
  ~Callbacks();

  // Listens to a signal. The signature is the C library's without the user data:
  //   callbacks.On<gboolean(GtkWidget*, GdkEvent*)>(window, "delete-event", [this](auto*, auto*) { ... });
  // A handler that fails answers with nothing: 0, FALSE, null.
  template <class Signature, class Handler>
  void On(gpointer object, const char* signal, Handler handler, GConnectFlags flags = GConnectFlags(0)) {
    using Thunk = Trampoline<Signature>;
    auto* data = new typename Thunk::Data{state_, std::move(handler)};
    const auto drop = +[](gpointer gone, GClosure*) { delete static_cast<typename Thunk::Data*>(gone); };
    Add(G_OBJECT(object), g_signal_connect_data(object, signal, G_CALLBACK(Thunk::Call), data, drop, flags));
  }
  // Stops listening to one object.
  void Off(gpointer object);

  // Once, when the pump is idle; once, after some milliseconds; again and again until cancelled. The number
  // is never 0, and means nothing any more once the handler of the first two has begun.
  unsigned Later(std::function<void()> handler);
  unsigned After(unsigned milliseconds, std::function<void()> handler);
  unsigned Every(unsigned milliseconds, std::function<void()> handler);
  // 0 and numbers that have ended are passed over.
  void Cancel(unsigned number);

  // For an operation that takes a GAsyncReadyCallback: give it Ended, and as its data Ending(handler). The
  // handler isn't called where the owner has gone meanwhile.
  using Ready = std::function<void(GObject* source, GAsyncResult* result)>;
  gpointer Ending(Ready handler);
  static void Ended(GObject* source, GAsyncResult* result, gpointer data) noexcept;

  // Runs a handler as if it had been called from outside, for what has no signal: drawing, virtual functions.
  void Run(const std::function<void()>& handler) { state_->Run(handler); }

 private:
  struct State {
    Runner runner;
    bool over = false;
    std::vector<unsigned> sources;
    void Run(const std::function<void()>& handler) noexcept;
  };
  struct Source;
  struct Connection {
    GWeakRef object{};
    gulong handler;
    Connection(GObject* object, gulong handler) : handler(handler) { g_weak_ref_init(&this->object, object); }
    ~Connection() { g_weak_ref_clear(&object); }
  };

  template <class Signature>
  struct Trampoline;
  template <class Result, class... Arguments>
  struct Trampoline<Result(Arguments...)> {
    struct Data {
      std::shared_ptr<State> state;
      std::function<Result(Arguments...)> handler;
    };
    static Result Call(Arguments... arguments, gpointer data) noexcept {
      auto* call = static_cast<Data*>(data);
      if constexpr (std::is_void_v<Result>) {
        call->state->Run([&] { call->handler(arguments...); });
      } else {
        Result result{};
        call->state->Run([&] { result = call->handler(arguments...); });
        return result;
      }
    }
  };

  void Add(GObject* object, gulong handler);
  unsigned Attach(GSource* source, std::function<void()> handler, bool again);
  static void Disconnect(Connection& connection);

  std::shared_ptr<State> state_;
  std::vector<std::unique_ptr<Connection>> connections_;
};

// The way in for the virtual functions of a class of ours, which have no owner to answer for them: one that
// fails is logged and answers with nothing.
template <class Function>
auto Guarded(Function function) noexcept -> decltype(function()) {
  try {
    return function();
  } catch (const std::exception& failure) {
    g_critical("A failure that nobody took: %s", failure.what());
  } catch (...) {
    g_critical("A failure of an unknown kind that nobody took");
  }
  return decltype(function())();
}
