#include "gtk/engine/GraphicsProbe.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>
#include <gdk/gdkx.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>

#include "platform/Text.h"

namespace {

// Without a device for drawing there is nothing to ask, and loading a software GL only to read its name would
// cost more than all the rest of the start.
bool HasDrawingDevice() {
  namespace fs = std::filesystem;
  std::error_code error;
  if (fs::exists("/dev/nvidiactl", error)) return true;
  for (const auto& entry : fs::directory_iterator("/dev/dri", error))
    if (entry.path().filename().string().starts_with("renderD")) return true;
  return false;
}

// What GL calls itself on the display; empty where there is none.
std::string Renderer() {
  GdkDisplay* display = gdk_display_get_default();
  if (!display || !GDK_IS_X11_DISPLAY(display) || !epoxy_has_egl()) return {};
  EGLDisplay egl =
      eglGetDisplay(reinterpret_cast<EGLNativeDisplayType>(gdk_x11_display_get_xdisplay(display)));
  if (egl == EGL_NO_DISPLAY || !eglInitialize(egl, nullptr, nullptr)) return {};
  std::string renderer;
  constexpr std::array<EGLint, 3> wanted = {EGL_RENDERABLE_TYPE, EGL_OPENGL_ES2_BIT, EGL_NONE};
  constexpr std::array<EGLint, 3> version = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (eglBindAPI(EGL_OPENGL_ES_API) && eglChooseConfig(egl, wanted.data(), &config, 1, &count) && count > 0) {
    EGLContext context = eglCreateContext(egl, config, EGL_NO_CONTEXT, version.data());
    if (context != EGL_NO_CONTEXT && eglMakeCurrent(egl, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) {
      if (const auto* name = glGetString(GL_RENDERER)) renderer = reinterpret_cast<const char*>(name);
      eglMakeCurrent(egl, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    if (context != EGL_NO_CONTEXT) eglDestroyContext(egl, context);
  }
  // The display stays initialised: the toolkit may be using the same one.
  return renderer;
}

}  // namespace

bool HasGraphicsProcessor() {
  if (!HasDrawingDevice()) return false;
  const std::string renderer = Text::LowerCase(Renderer());
  static constexpr std::array<const char*, 4> in_software = {"llvmpipe", "softpipe", "swrast", "software"};
  return !renderer.empty() && std::none_of(in_software.begin(), in_software.end(), [&](const char* name) {
    return renderer.find(name) != renderer.npos;
  });
}
