#include "tools/store/demo/Pictures.h"

namespace tavoline::tool {

std::unique_ptr<Pictures> makePictures(std::string& reason) {
  reason = "cet outil a été compilé sans les écrans";
  return nullptr;
}

}  // namespace tavoline::tool
