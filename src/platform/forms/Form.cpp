#include "platform/forms/Form.h"

#include "platform/forms/qt/Window.h"

namespace forms {

Form::Form(const FormDesign& design) : window_(std::make_unique<qt::Window>(design)) {}

Form::~Form() = default;

QWidget* Form::client() const {
  return window_.get();
}

Colour Form::backColour() const {
  return window_->backColour();
}

void Form::load() {
  if (loaded_) return;
  Form_Load();
  loaded_ = true;
}

void Form::Show() {
  load();
  window_->showScreen();
}

void Form::ShowModal() {
  load();
  window_->showScreenModal();
}

void Form::Unload() {
  window_->unload();
}

bool Form::unloaded() const {
  return window_->isClosed();
}

}  // namespace forms
