#include "gtk/page/PermissionBar.h"

#include "gtk/page/Page.h"

namespace {

// What the page wants to do, to go on behind "… wants to"; empty for what isn't asked.
std::string Wish(WebKitPermissionRequest* request) {
  if (WEBKIT_IS_GEOLOCATION_PERMISSION_REQUEST(request)) return "know where you are";
  if (WEBKIT_IS_NOTIFICATION_PERMISSION_REQUEST(request)) return "show notifications";
  if (WEBKIT_IS_POINTER_LOCK_PERMISSION_REQUEST(request)) return "take the mouse pointer";
  if (WEBKIT_IS_CLIPBOARD_PERMISSION_REQUEST(request)) return "read the clipboard";
  if (WEBKIT_IS_DEVICE_INFO_PERMISSION_REQUEST(request))
    return "know which cameras and microphones there are";
  if (WEBKIT_IS_MEDIA_KEY_SYSTEM_PERMISSION_REQUEST(request)) return "play protected media";
  if (WEBKIT_IS_WEBSITE_DATA_ACCESS_PERMISSION_REQUEST(request)) {
    auto* access = WEBKIT_WEBSITE_DATA_ACCESS_PERMISSION_REQUEST(request);
    return "use the cookies of " +
           TextOf(webkit_website_data_access_permission_request_get_requesting_domain(access));
  }
  if (!WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request)) return {};
  auto* media = WEBKIT_USER_MEDIA_PERMISSION_REQUEST(request);
  if (webkit_user_media_permission_is_for_display_device(media)) return "see your screen";
  const bool sees = webkit_user_media_permission_is_for_video_device(media);
  const bool hears = webkit_user_media_permission_is_for_audio_device(media);
  return sees && hears ? "use the camera and the microphone" : sees ? "use the camera" : "use the microphone";
}

}  // namespace

namespace PermissionBar {

bool Ask(Page& page, WebKitPermissionRequest* request) {
  const std::string wish = Wish(request);
  if (wish.empty()) return false;
  page.Asks().Ask({.text = page.Asker() + " wants to " + wish + ".", .yes = "_Allow", .no = "_Deny"},
                  [held = std::shared_ptr<WebKitPermissionRequest>(Share(request))](bool yes) {
                    yes ? webkit_permission_request_allow(held.get())
                        : webkit_permission_request_deny(held.get());
                  });
  return true;
}

}  // namespace PermissionBar
