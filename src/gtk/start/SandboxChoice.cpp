#include "gtk/start/SandboxChoice.h"

#include <glib.h>

#include <cstdio>

#include "gtk/base/GObjects.h"
#include "platform/Failure.h"

namespace {

std::string Wish() { return TextOf(g_getenv("MARLOWICK_SANDBOX")); }

}  // namespace

namespace SandboxChoice {

bool IsOff() { return Wish() == "off"; }

Way Choose(SandboxCheck* check, const std::function<bool(const std::string& question)>& asks) {
  if (!check) return Way::NoSandbox;
  // It would turn the sandbox off without a word.
  g_unsetenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
  const std::string& why = check->WhyNot();
  if (why.empty()) return Way::Sandbox;
  const std::string because =
      "The sandbox that keeps pages from your files and programs can't be set up: " + why + ".";
  if (Wish() == "on")
    throw Failure(because + " Marlowick doesn't go on without it, since MARLOWICK_SANDBOX is \"on\"");
  const bool yes =
      asks(because +
           "\n\nWithout it, a page that finds a fault in the engine can do all that you can: read "
           "your files, change them, start programs.\n\nGo on without the sandbox, for this start?");
  if (!yes)
    std::fprintf(stderr, "marlowick: %s With MARLOWICK_SANDBOX=off it goes on without.\n", because.c_str());
  return yes ? Way::NoSandbox : Way::End;
}

}  // namespace SandboxChoice
