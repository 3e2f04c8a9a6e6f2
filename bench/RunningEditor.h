#pragma once

#include <QApplication>
#include <QComboBox>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/forms/Application.h"
#include "support/TestHost.h"

namespace bench {

/// The levelled editor of the shop in a folder, in this process and off screen.
class RunningEditor {
 public:
  /// Prepares the start: sets the environment and the program folder, and creates the toolkit's
  /// application.
  explicit RunningEditor(const std::filesystem::path& shop) : environment_(shop) {}

  /// Starts the program; returns when its window is painted.
  void start();

  /// A control by its name. Raises where the screen has none.
  template <class Widget>
  Widget& control(const char* name) const {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (auto* found = window->findChild<Widget*>(QString::fromLatin1(name))) return *found;
    throw std::runtime_error(std::string("no ") + name + " on the screen");
  }

 private:
  struct Environment {
    explicit Environment(const std::filesystem::path& shop);
  };
  Environment environment_;  // before the toolkit, which reads it
  forms::Application application_;
  support::TestHost host_;
};

/// Chooses an entry of a drop-down list, as the user does.
void pick(QComboBox& box, int entry);

/// Handles all pending events, painting included.
void settle();

}  // namespace bench
