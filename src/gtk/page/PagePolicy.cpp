#include "gtk/page/PagePolicy.h"

#include <libsoup/soup.h>

#include <algorithm>
#include <array>

#include "gtk/dialog/Notice.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/PermissionBar.h"
#include "gtk/page/text/HostName.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"

namespace {

constexpr size_t MostShown = 60;  // characters of an address in a question

bool IsOneOf(const std::string& word, std::initializer_list<const char*> words) {
  return std::any_of(words.begin(), words.end(), [&](const char* one) { return word == one; });
}

bool BelongsToAnotherProgram(const std::string& scheme) {
  return !IsOneOf(scheme, {"", "http", "https", "ws", "wss", "file", "about", "data", "blob", "javascript",
                           "view-source", PageLoad::ButtonScheme, "webkit", "resource"});
}

// A link to mail and the like. The user's own wish is followed; a page's is asked about, once for each press.
// False: there is no program for it.
bool GiveAway(Page& page, const std::string& uri, bool pressed) {
  const Owned<GAppInfo> program(g_app_info_get_default_for_uri_scheme(Address::Scheme(uri).c_str()));
  if (!program) return false;
  const std::string name = TextOf(g_app_info_get_display_name(program.get()));
  const auto open = [&page, uri, name] {
    GError* error = nullptr;
    if (g_app_info_launch_default_for_uri(uri.c_str(), nullptr, &error)) return;
    const OwnedError reason(error);
    Notice::Show(page.Window(), name + " wasn't started",
                 "It was to open \"" + uri + "\": " + reason->message);
  };
  if (page.Load().Wants(uri)) {
    open();
  } else if (pressed && page.TakePress()) {
    page.Asks().Ask(
        {.text = page.Asker() + " wants to open \"" + Text::Left(uri, MostShown) + "\" in " + name + ".",
         .yes = "_Open",
         .no = "_Cancel",
         .refusal = Questions::Refusal::MayBeStopped,
         .alone = "program"},
        [open](bool yes) {
          if (yes) open();
        });
  }
  page.Load().Denied(uri);
  return true;
}

std::string Shown(Page& page) {
  return page.PresentView() ? TextOf(webkit_web_view_get_uri(page.PresentView())) : std::string();
}

std::string UriOf(WebKitNavigationAction* action) {
  return TextOf(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
}

// A link that the user pressed, and not what a redirect made of it.
bool IsPress(WebKitNavigationAction* action) {
  return webkit_navigation_action_is_user_gesture(action) && !webkit_navigation_action_is_redirect(action) &&
         webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED;
}

bool IsPressedInHistory(Page& page, WebKitNavigationAction* action) {
  return IsPress(action) && page.World().IsHistory(Shown(page));
}

// The own pages' links and the history's addresses that aren't the web's.
bool TakeOwnAddress(Page& page, const std::string& uri, WebKitNavigationAction* action) {
  const std::string scheme = Address::Scheme(uri);
  if (scheme == PageLoad::ButtonScheme) {
    if (IsPress(action)) page.Calls().Later([&page, uri] { page.Load().Press(uri); });
    return true;
  }
  const bool pressed = IsOneOf(scheme, {"view-source", "data"}) && IsPressedInHistory(page, action);
  if (!pressed && scheme != "view-source") return false;
  // A page may not send anyone to a source; the user may go back to one, and open the history's.
  const auto type = webkit_navigation_action_get_navigation_type(action);
  const bool again = type == WEBKIT_NAVIGATION_TYPE_BACK_FORWARD || type == WEBKIT_NAVIGATION_TYPE_RELOAD;
  if (pressed || (again && page.Commanded()))
    page.Load().Start({uri, {}, true});
  else
    page.Load().Denied(uri);
  return true;
}

// A day of the history that there is no page of: the frame that wants it shows what the element has to say.
bool TakeMissingDay(Page& page, const std::string& uri, WebKitNavigationAction* action) {
  BrowserWorld& world = page.World();
  const std::string shown = Shown(page);
  if (uri == shown || !world.IsHistory(shown) || !world.IsHistory(uri)) return false;
  const std::string path = TakeText(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
  if (path.empty() || g_file_test(path.c_str(), G_FILE_TEST_EXISTS)) return false;
  const std::string frame = TextOf(webkit_navigation_action_get_frame_name(action));
  // The request has to be turned down first.
  page.Calls().Later([&page, uri, frame] {
    const ErrorPage error = LoadErrors::Failed(uri, {LoadFault::Kind::File, {}});
    page.ShowInFrame(uri, frame, page.World().WriteFrameError(error.Html()));
  });
  return true;
}

// Where the hand that pressed a link wants it, as in any browser.
LinkPlace PlaceOf(WebKitNavigationAction* action) {
  if (webkit_navigation_action_get_navigation_type(action) != WEBKIT_NAVIGATION_TYPE_LINK_CLICKED ||
      !webkit_navigation_action_is_user_gesture(action))
    return LinkPlace::Here;
  const unsigned held = webkit_navigation_action_get_modifiers(action);
  const bool shift = held & GDK_SHIFT_MASK;
  if (webkit_navigation_action_get_mouse_button(action) == 2 || held & GDK_CONTROL_MASK)
    return shift ? LinkPlace::TabInFront : LinkPlace::TabBehind;
  return shift ? LinkPlace::PlainWindow : LinkPlace::Here;
}

// True: the user wants it elsewhere, and there it goes. One press chooses one link: what a script makes of it
// besides waits as any window without a press does.
bool TakeChoice(Page& page, const std::string& uri, WebKitNavigationAction* action) {
  const LinkPlace place = PlaceOf(action);
  if (place == LinkPlace::Here) return false;
  if (page.TakePress())
    page.Calls().Later([&page, uri, place] { page.OpenChosen(uri, place); });
  else
    page.HoldWindow(uri);
  return true;
}

// The titles of visited pages stand in the history's files, and may hold what leads elsewhere by itself. A
// load of the program's own doesn't come here: the page's address is then the wanted one already.
bool LeadsOutOfHistory(Page& page, const std::string& uri, WebKitNavigationAction* action) {
  if (webkit_navigation_action_get_navigation_type(action) != WEBKIT_NAVIGATION_TYPE_OTHER ||
      webkit_navigation_action_is_user_gesture(action) || webkit_navigation_action_is_redirect(action))
    return false;
  return page.World().IsHistory(Shown(page)) && !page.World().IsHistory(uri) &&
         uri != page.World().FrameError();
}

// True: the request is taken and must not be followed.
bool TakeRequest(Page& page, WebKitNavigationAction* action) {
  const std::string uri = UriOf(action);
  const bool leads_on = webkit_navigation_action_is_redirect(action) && !page.Load().Wanted().empty();
  if (webkit_navigation_action_is_user_gesture(action) || leads_on) page.Wish(uri);
  if (LeadsOutOfHistory(page, uri, action) || TakeOwnAddress(page, uri, action) ||
      TakeMissingDay(page, uri, action))
    return true;
  if (BelongsToAnotherProgram(Address::Scheme(uri)) &&
      GiveAway(page, uri, webkit_navigation_action_is_user_gesture(action)))
    return true;
  return TakeChoice(page, uri, action);
}

// Sending a form once more may buy twice: the user is asked, and without a yes the page stays.
bool AskToSendAgain(Page& page, WebKitNavigationAction* action, WebKitPolicyDecision* decision) {
  if (webkit_navigation_action_get_navigation_type(action) != WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED)
    return false;
  page.Asks().Ask(
      {.text = "To show this page again, what was entered in a form has to be sent once more.",
       .yes = "_Send Again",
       .no = "S_tay",
       .refusal = Questions::Refusal::MayBeStopped},
      [&page, uri = UriOf(action), held = std::shared_ptr<WebKitPolicyDecision>(Share(decision))](bool yes) {
        yes ? webkit_policy_decision_use(held.get()) : webkit_policy_decision_ignore(held.get());
        if (!yes) page.Load().Busy() ? page.Load().Denied(uri) : page.Load().Stay();
      });
  return true;
}

bool IsAttachment(WebKitURIResponse* response) {
  SoupMessageHeaders* headers = webkit_uri_response_get_http_headers(response);
  char* disposition = nullptr;
  if (!headers || !soup_message_headers_get_content_disposition(headers, &disposition, nullptr)) return false;
  return g_ascii_strcasecmp(TakeText(disposition).c_str(), "attachment") == 0;
}

bool IsEmptyError(WebKitURIResponse* response, bool shown) {
  SoupMessageHeaders* headers = webkit_uri_response_get_http_headers(response);
  const char* length = headers ? soup_message_headers_get_one(headers, "Content-Length") : nullptr;
  if (webkit_uri_response_get_status_code(response) < 400) return false;
  // A proxy that can't reach the site says so without a page.
  return !shown || TextOf(length) == "0";
}

bool DecideResponse(Page& page, WebKitResponsePolicyDecision* decision) {
  WebKitURIResponse* response = webkit_response_policy_decision_get_response(decision);
  const bool shown =
      webkit_response_policy_decision_is_mime_type_supported(decision) && !IsAttachment(response);
  const unsigned status = webkit_uri_response_get_status_code(response);
  const bool main = webkit_response_policy_decision_is_main_frame_main_resource(decision);
  page.DocumentAnswered(TextOf(webkit_uri_response_get_uri(response)), main);
  if (!main) return false;
  if (IsEmptyError(response, shown)) {
    webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
    page.Load().ShowErrorInstead(
        LoadErrors::EmptyAnswer(TextOf(webkit_uri_response_get_uri(response)), status));
    return true;
  }
  if (shown || status == 204 || status == 205) return false;
  webkit_policy_decision_download(WEBKIT_POLICY_DECISION(decision));
  return true;
}

// Until the engine can tell such pages itself; where it never can, none comes.
bool AwaitGuard(Page& page, const std::string& uri, WebKitPolicyDecision* decision) {
  if (!page.ComesTooEarly(uri)) return false;
  page.AwaitGuard([&page, uri, held = std::shared_ptr<WebKitPolicyDecision>(Share(decision))] {
    if (!page.ComesTooEarly(uri)) return webkit_policy_decision_use(held.get());
    webkit_policy_decision_ignore(held.get());
    page.Load().Denied(uri);
    page.Say("Not opened, since it comes without encryption and Marlowick can't ask before: " +
             HostName::Shown(WebAddress::WithoutUser(uri)));
  });
  return true;
}

// One that waits for an answer. The engine follows what nobody decides about, so it is turned down then.
class Undecided {
 public:
  explicit Undecided(WebKitPolicyDecision* decision) : decision_(Share(decision)) {}
  Undecided(const Undecided&) = delete;
  ~Undecided() {
    if (decision_) webkit_policy_decision_ignore(decision_.get());
  }
  Owned<WebKitPolicyDecision> Take() { return std::move(decision_); }

 private:
  Owned<WebKitPolicyDecision> decision_;
};

// A link to another site: the page may want to be asked before.
bool AskToFollow(Page& page, WebKitNavigationAction* action, WebKitPolicyDecision* decision) {
  const std::string uri = UriOf(action);
  if (!IsPress(action) || !page.LeavesUnasked(uri)) return false;
  page.AskToFollow(uri,
                   [&page, uri, held = std::shared_ptr<WebKitPolicyDecision>(Share(decision))](bool agreed) {
                     if (!agreed) return webkit_policy_decision_ignore(held.get());
                     if (!AwaitGuard(page, uri, held.get())) webkit_policy_decision_use(held.get());
                   });
  return true;
}

// True: the decision has been made here, or has been made for later.
bool Decide(Page& page, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  page.Taken();
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE)
    return DecideResponse(page, WEBKIT_RESPONSE_POLICY_DECISION(decision));
  WebKitNavigationAction* action =
      webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  if (AskToSendAgain(page, action, decision)) return true;
  const bool here = type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION;
  const bool taken = here ? TakeRequest(page, action) : TakeChoice(page, UriOf(action), action);
  if (!taken)
    return here && (AskToFollow(page, action, decision) || AwaitGuard(page, UriOf(action), decision));
  webkit_policy_decision_ignore(decision);
  return true;
}

}  // namespace

namespace PagePolicy {

void Attach(Page& page, WebKitWebView* view) {
  page.Calls().On<gboolean(WebKitWebView*, WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
      view, "decide-policy", [&page](auto*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
        return Decide(page, decision, type);
      });
  page.Calls().On<gboolean(WebKitWebView*, WebKitPermissionRequest*)>(
      view, "permission-request",
      [&page](auto*, WebKitPermissionRequest* request) { return PermissionBar::Ask(page, request); });
}

}  // namespace PagePolicy
