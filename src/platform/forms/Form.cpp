#include "platform/forms/Form.h"

#include <QEventLoop>
#include <QWindow>

#include "platform/forms/Application.h"
#include "platform/forms/qt/Raise.h"
#include "platform/forms/qt/Window.h"

namespace forms {

Form::Form(const FormDesign& design) : window_(std::make_unique<Window>(*this, design)) {}

Form::~Form() = default;

QWidget* Form::client() const {
  return window_.get();
}

Colour Form::backColour() const {
  return window_->design.backColour;
}

void Form::load() {
  if (window_->loaded) return;
  Form_Load();
  window_->loaded = true;
}

void Form::Show() {
  load();
  window_->appear();
}

void Form::ShowModal() {
  load();
  QEventLoop loop;
  const qt::EndWatch watch([&loop] { loop.quit(); });
  window_->modalLoop = &loop;
  window_->setWindowModality(Qt::ApplicationModal);
  window_->appear();
  if (!process::hasEnded()) loop.exec();
  window_->modalLoop = nullptr;
  window_->hide();
  process::unwindIfEnded();
  // A window manager that is behind can leave the keyboard with a box that has gone.
  QWindow* below = window_->windowHandle()->transientParent();
  if (below != nullptr && below->isVisible()) below->requestActivate();
}

void Form::Unload() {
  if (window_->unloaded) return;
  window_->leave();
  Application::screenClosed();
}

bool Form::unloaded() const {
  return window_->unloaded;
}

}  // namespace forms
