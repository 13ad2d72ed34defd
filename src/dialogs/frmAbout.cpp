#include "dialogs/frmAbout.h"

#include <cstdio>

#include "core/Conversions.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "platform/Registry.h"

namespace {

// Names that nobody else can ever own.
constexpr const char* ProjectAddress = "https://marlowick.example/";
constexpr const char* MailAddress = "hello@marlowick.example";

constexpr uint32_t AllAccess = 0x2003F;
constexpr uint32_t BufferSize = 1024;  // characters

constexpr const char* ToolKey = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)";
constexpr const char* ToolLocationKey = R"(SOFTWARE\Microsoft\Shared Tools Location)";

// The number whose bytes these are, the lowest first. Digits aren't padded: what other programs read of such
// a value is read the same here.
std::string NumberText(const std::string& bytes) {
  std::string digits = "&h";
  for (size_t i = bytes.size(); i-- > 0;) {
    char hexadecimal[3];
    std::snprintf(hexadecimal, sizeof hexadecimal, "%X", static_cast<unsigned char>(bytes[i]));
    digits += hexadecimal;
  }
  return std::to_string(ToInt32(LeadingNumber(digits)));
}

}  // namespace

frmAbout::frmAbout(Program& program) : Dialog(program.desktop, "frmAbout"), program_(program) {
  Label4.Caption = ProjectAddress;
  Label5.Caption = MailAddress;
  Label4.Click = [this] { Follow([this](TabSet& tabs) { tabs.AddTab(Label4.Caption); }); };
  // The desktop's mail program takes it from there.
  Label5.Click = [this] {
    Follow(
        [this](TabSet& tabs) { tabs.WebBrowser1(tabs.CurrentTab).Navigate("mailto:" + Label5.Caption()); });
  };
  cmdOK.Click = [this] { program_.about.Unload(); };
  cmdSysInfo.Click = [this] { StartSysInfo(); };
  Deactivate = [this] { Skipping([this] { SetFocus(); }); };
  LostFocus = [this] { SetFocus(); };
}

void frmAbout::Form_Load() { labVersions.Caption = program_.desktop.Versions(); }

void frmAbout::Follow(const std::function<void(TabSet&)>& link) {
  try {
    link(program_.main().tabs);
  } catch (const Failure& failure) {
    program_.desktop.MsgBox(std::string("That can't be done: ") + failure.what() +
                                ".\n\nThe page on show may have ended. Choose another tab, and try again.",
                            Buttons::Ok, "Marlowick");
    return;
  }
  program_.about.Unload();
}

bool frmAbout::GetKeyValue(int32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                           std::string& KeyVal) {
  const Registry& registry = program_.desktop.SystemRegistry();
  long key = 0;
  const auto fail = [&] {
    KeyVal.clear();
    registry.RegCloseKey(key);
    return false;
  };
  if (registry.RegOpenKeyExA(KeyRoot, KeyName, AllAccess, key) != Registry::Success) return fail();
  std::string buffer(BufferSize, '\0');
  uint32_t size = BufferSize, type = 0;
  if (registry.RegQueryValueExA(key, SubKeyRef, type, buffer, size) != Registry::Success) return fail();
  buffer.resize(size);
  if (buffer.ends_with('\0')) buffer.pop_back();
  if (type == Registry::REG_SZ) KeyVal = buffer;
  if (type == Registry::REG_DWORD) KeyVal = NumberText(buffer);
  registry.RegCloseKey(key);
  return true;
}

void frmAbout::StartSysInfo() {
  try {
    std::string path;
    if (GetKeyValue(Registry::HKEY_LOCAL_MACHINE, ToolKey, "PATH", path)) {
      program_.desktop.Shell(path);
      return;
    }
    if (GetKeyValue(Registry::HKEY_LOCAL_MACHINE, ToolLocationKey, "MSINFO", path)) {
      path += "\\MSINFO32.EXE";
      if (program_.general.FileExists(path)) {
        program_.desktop.Shell(path);
        return;
      }
    }
  } catch (const Failure&) {
    // The message below says it all.
  }
  program_.desktop.MsgBox("System Information Is Unavailable At This Time", Buttons::Ok, "Marlowick");
}
