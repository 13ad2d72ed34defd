#include "gtk/base/Callbacks.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "gtk/base/GObjects.h"
#include "platform/Failure.h"

namespace {

// An owner that writes down what became of its handlers' failures.
struct Owner {
  std::string failed;
  std::optional<Callbacks> callbacks{[this](const std::function<void()>& handler) {
    try {
      handler();
    } catch (const Failure& failure) {
      failed = failure.what();
    }
  }};
};

void Pump() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

Owned<GSimpleAction> Thing() { return Owned<GSimpleAction>(g_simple_action_new("thing", nullptr)); }

TEST(Callbacks, SignalsEndWithTheirOwnerAndWithTheirObject) {
  auto thing = Thing();
  int heard = 0;
  {
    Owner owner;
    owner.callbacks->On<void(GSimpleAction*, GVariant*)>(thing.get(), "activate",
                                                         [&](auto*, auto*) { ++heard; });
    auto other = Thing();
    owner.callbacks->On<void(GSimpleAction*, GVariant*)>(other.get(), "activate",
                                                         [&](auto*, auto*) { ++heard; });
    g_action_activate(G_ACTION(thing.get()), nullptr);
    EXPECT_EQ(heard, 1);
    // An object that goes first is nothing to disconnect from later.
    other.reset();
    owner.callbacks->Off(thing.get());
    g_action_activate(G_ACTION(thing.get()), nullptr);
    EXPECT_EQ(heard, 1);
    owner.callbacks->On<void(GSimpleAction*, GVariant*)>(thing.get(), "activate",
                                                         [&](auto*, auto*) { ++heard; });
  }
  g_action_activate(G_ACTION(thing.get()), nullptr);
  EXPECT_EQ(heard, 1);
}

TEST(Callbacks, AFailureStaysWithTheOwnerAndTheHandlerAnswersWithNothing) {
  Owner owner;
  auto thing = Thing();
  owner.callbacks->On<void(GObject*, GParamSpec*)>(thing.get(), "notify::enabled",
                                                   [](auto*, auto*) { throw Failure("in a signal"); });
  g_simple_action_set_enabled(thing.get(), FALSE);
  EXPECT_EQ(owner.failed, "in a signal");
  owner.callbacks->Later([] { throw Failure("in an idle"); });
  Pump();
  EXPECT_EQ(owner.failed, "in an idle");
}

TEST(Callbacks, AHandlerMayEndItsOwner) {
  Owner owner;
  auto thing = Thing();
  std::string text = "kept";
  owner.callbacks->On<void(GSimpleAction*, GVariant*)>(thing.get(), "activate", [&, text](auto*, auto*) {
    owner.callbacks.reset();
    owner.failed = text + " until its handler has returned";
  });
  g_action_activate(G_ACTION(thing.get()), nullptr);
  EXPECT_EQ(owner.failed, "kept until its handler has returned");
}

TEST(Callbacks, LaterCallsCanBeCancelledAndEndWithTheirOwner) {
  int once = 0, again = 0;
  {
    Owner owner;
    owner.callbacks->Later([&] { ++once; });
    const unsigned cancelled = owner.callbacks->Later([&] { ++once; });
    owner.callbacks->Cancel(cancelled);
    owner.callbacks->Cancel(cancelled);
    unsigned every = 0;
    every = owner.callbacks->Every(0, [&] {
      if (++again == 3) owner.callbacks->Cancel(every);
    });
    Pump();
    EXPECT_EQ(once, 1);
    while (again < 3) g_main_context_iteration(nullptr, TRUE);
    Pump();
    EXPECT_EQ(again, 3);
    owner.callbacks->Later([&] { ++once; });
    owner.callbacks->After(0, [&] { ++once; });
  }
  Pump();
  EXPECT_EQ(once, 1);
}

TEST(Callbacks, AnOperationThatEndsAfterItsOwnerTellsNobody) {
  int ended = 0;
  auto thing = Thing();
  const auto finish = [&](gpointer data) {
    GTask* task = g_task_new(thing.get(), nullptr, Callbacks::Ended, data);
    g_task_return_boolean(task, TRUE);
    g_object_unref(task);
  };
  {
    Owner owner;
    finish(owner.callbacks->Ending([&](GObject* source, GAsyncResult*) {
      EXPECT_EQ(source, G_OBJECT(thing.get()));
      ++ended;
    }));
    Pump();
    EXPECT_EQ(ended, 1);
    finish(owner.callbacks->Ending([&](GObject*, GAsyncResult*) { ++ended; }));
  }
  Pump();
  EXPECT_EQ(ended, 1);
}

}  // namespace
