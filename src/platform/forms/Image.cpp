#include "platform/forms/Image.h"

#include "platform/forms/qt/TickPicture.h"
#include "platform/runtime/RunTimeError.h"

namespace forms {
namespace {

QWidget* makePicture(QWidget* parent, std::string_view resource) {
  if (resource != "tick") throw runtime::RunTimeError(runtime::ErrorNumber::FileNotFound);
  return new qt::TickPicture(parent);
}

}  // namespace

Image::Image(Container& container, const Design& design, std::string_view resource)
    : Control(container, design, 0, makePicture(container.client(), resource)) {}

}  // namespace forms
