#pragma once

#include <memory>

#include "platform/forms/Container.h"
#include "platform/forms/FormDesign.h"

namespace forms {

/// A screen. It is loaded at its first show: the load event runs before anything is to be seen, and
/// a failure in it leaves the screen unshown.
class Form : public Container {
 public:
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Loads the screen if need be and shows it; the caller goes on. With the last screen closed the
  /// program ends with status 0.
  void Show();
  /// Loads the screen if need be and shows it; the caller stops until it is unloaded. All other
  /// screens are shut out meanwhile: what the user does there is dropped.
  void ShowModal();
  /// Takes the screen away and lets a modal show return.
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

/// The one default instance of a screen: a use while it is absent creates it. An instance that was
/// unloaded but not dropped begins its next use afresh.
template <class Screen>
class DefaultInstance {
 public:
  static std::shared_ptr<Screen> get() {
    if (!instance() || instance()->unloaded()) instance() = std::make_shared<Screen>();
    return instance();
  }
  /// Sets the default instance to absent. Whoever is in the middle of showing it keeps it alive.
  static void drop() { instance().reset(); }
  static bool exists() { return instance() != nullptr; }

 private:
  /// Never destroyed: at the process's end the toolkit goes first, and no widget may outlive it.
  static std::shared_ptr<Screen>& instance() {
    static auto& screen = *new std::shared_ptr<Screen>;
    return screen;
  }
};

}  // namespace forms
