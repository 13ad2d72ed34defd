#include "platform/Safety.h"

const char* InWords(Safety safety) {
  switch (safety) {
    case Safety::Secure:
      return "Secure connection";
    case Safety::NotSecure:
      return "Not secure: this page came without encryption";
    case Safety::Exception:
      return "Not secure: you went on in spite of a bad certificate";
    case Safety::OwnPage:
      return "A page of the program's own";
    case Safety::LocalFile:
      return "A file on this computer";
    case Safety::Unknown:
      break;
  }
  return "No site vouches for this page";
}
