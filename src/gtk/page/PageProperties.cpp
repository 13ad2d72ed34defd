#include "gtk/page/PageProperties.h"

#include <memory>
#include <string>

#include "gtk/dialog/OwnDialog.h"
#include "gtk/page/BrowserWorld.h"
#include "gtk/page/Page.h"
#include "gtk/page/text/Address.h"
#include "platform/Text.h"
#include "platform/WebAddress.h"
#include "platform/dialog/Controls.h"

namespace {

// A page gives itself a title and an address as long as it likes.
constexpr size_t MostCharacters = 2000;

constexpr const char* NoSandbox = "\nPages run without a sandbox: one that breaks out reaches your files";

std::string Security(Page& page) {
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags flags{};
  const std::string scheme = Address::Scheme(page.Address());
  if (scheme == "file") return "A file on this computer";
  if (scheme != "http" && scheme != "https") return "Made by the program itself";
  if (!webkit_web_view_get_tls_info(page.View(), &certificate, &flags)) return "The connection isn't secure";
  const std::string issuer =
      certificate ? TakeText(g_tls_certificate_get_issuer_name(certificate)) : std::string();
  const std::string how = flags ? "Encrypted, but the certificate has problems" : "Secure connection";
  return issuer.empty() ? how : how + "\nCertificate issued by " + issuer;
}

// Each value stands beside its name; what isn't known has neither.
class PropertiesDialog : public OwnDialog {
 public:
  explicit PropertiesDialog(Page& page) : OwnDialog(page.Window(), "PageProperties") {
    Title.Caption = Text::Left(page.Title(), MostCharacters);
    Address.Caption = Text::Left(WebAddress::WithoutUser(page.Address()), MostCharacters);
    SecurityOfPage.Caption = Security(page) + (page.World().Base().Sandboxed() ? "" : NoSandbox);
    WebKitWebResource* source = webkit_web_view_get_main_resource(page.View());
    WebKitURIResponse* response = source ? webkit_web_resource_get_response(source) : nullptr;
    const guint64 length = response ? webkit_uri_response_get_content_length(response) : 0;
    Type.Caption = response ? TextOf(webkit_uri_response_get_mime_type(response)) : "";
    if (length > 0) Size.Caption = TakeText(g_format_size_full(length, G_FORMAT_SIZE_LONG_FORMAT));
    TypeName.Visible = Type.Visible = !Type.Caption->empty();
    SizeName.Visible = Size.Visible = !Size.Caption->empty();
    Command1.Click = [this] { Close(); };
  }

  Controls::Label Title{*this, "Title"}, Address{*this, "Address"}, SecurityOfPage{*this, "Security"};
  Controls::Label TypeName{*this, "TypeName"}, Type{*this, "Type"};
  Controls::Label SizeName{*this, "SizeName"}, Size{*this, "Size"};
  Controls::CommandButton Command1{*this, "Command1"};
};

}  // namespace

namespace PageProperties {

void Show(Page& page) { OwnDialog::Open(std::make_shared<PropertiesDialog>(page)); }

}  // namespace PageProperties
