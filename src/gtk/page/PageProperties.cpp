#include "gtk/page/PageProperties.h"

#include <memory>
#include <string>

#include "gtk/dialog/OwnDialog.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "platform/Text.h"
#include "platform/dialog/Controls.h"

namespace {

// A page gives itself a title and an address as long as it likes.
constexpr size_t MostCharacters = 2000;

std::string SecurityOf(Page& page) {
  const Safety safety = page.Security();
  std::string text = InWords(safety);
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags flags{};
  if (safety == Safety::Secure || safety == Safety::Exception)
    webkit_web_view_get_tls_info(page.View(), &certificate, &flags);
  if (certificate)
    text += "\nCertificate issued by " + TakeText(g_tls_certificate_get_issuer_name(certificate));
  if (!page.World().Base().Sandboxed())
    text +=
        std::string("\n") + NoSandboxInWords + ": one that breaks out of its place gets at all your files";
  return text;
}

// Each value stands beside its name; what isn't known has neither.
class PropertiesDialog : public OwnDialog {
 public:
  explicit PropertiesDialog(Page& page) : OwnDialog(page.Window(), "PageProperties") {
    Title.Caption = Text::Left(page.Title(), MostCharacters);
    Address.Caption = Text::Left(page.ShownAddress(), MostCharacters);
    Security.Caption = SecurityOf(page);
    WebKitWebResource* source = webkit_web_view_get_main_resource(page.View());
    WebKitURIResponse* response = source ? webkit_web_resource_get_response(source) : nullptr;
    const guint64 length = response ? webkit_uri_response_get_content_length(response) : 0;
    Type.Caption = response ? TextOf(webkit_uri_response_get_mime_type(response)) : "";
    if (length > 0) Size.Caption = TakeText(g_format_size_full(length, G_FORMAT_SIZE_LONG_FORMAT));
    TypeName.Visible = Type.Visible = !Type.Caption->empty();
    SizeName.Visible = Size.Visible = !Size.Caption->empty();
    Command1.Click = [this] { Close(); };
  }

  Controls::Label Title{*this, "Title"}, Address{*this, "Address"}, Security{*this, "Security"};
  Controls::Label TypeName{*this, "TypeName"}, Type{*this, "Type"};
  Controls::Label SizeName{*this, "SizeName"}, Size{*this, "Size"};
  Controls::CommandButton Command1{*this, "Command1"};
};

}  // namespace

namespace PageProperties {

void Show(Page& page) { OwnDialog::Open(std::make_shared<PropertiesDialog>(page)); }

}  // namespace PageProperties
