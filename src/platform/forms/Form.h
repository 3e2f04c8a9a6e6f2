#pragma once

#include <memory>

#include "platform/forms/Container.h"
#include "platform/forms/FormDesign.h"

namespace forms {

/// A screen. Its first show loads it: the load event runs before anything is visible, and a failure
/// in it leaves the screen unshown.
class Form : public Container {
 public:
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Loads the screen if it isn't loaded, shows it and returns. When the last screen is closed the
  /// program ends with status 0.
  void Show();
  /// Loads the screen if it isn't loaded, shows it and returns after it has been unloaded. All
  /// other screens are blocked meanwhile: they ignore what the user does.
  void ShowModal();
  /// Closes the screen and lets a modal show return.
  void Unload();
  /// True once the screen was unloaded, by code or by its close box.
  bool unloaded() const;

  QWidget* client() const override;
  qt::Window& window() const override { return *window_; }
  Colour backColour() const override;

 protected:
  explicit Form(const FormDesign& design);

  /// The load event.
  virtual void Form_Load() {}

 private:
  void load();

  std::unique_ptr<qt::Window> window_;
  bool loaded_ = false;
};

/// The default instance of a screen. `get` creates it at the first use, and creates a new one at
/// the next use after it was unloaded or dropped.
template <class Screen>
class DefaultInstance {
 public:
  static std::shared_ptr<Screen> get() {
    if (!instance() || instance()->unloaded()) instance() = std::make_shared<Screen>();
    return instance();
  }
  /// Sets the default instance to absent. A caller that is showing it keeps it alive.
  static void drop() { instance().reset(); }

 private:
  /// Never destroyed: at exit the toolkit is destroyed first, and no widget may outlive it.
  static std::shared_ptr<Screen>& instance() {
    static auto& screen = *new std::shared_ptr<Screen>;
    return screen;
  }
};

}  // namespace forms
