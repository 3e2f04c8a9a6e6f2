#pragma once

#include <memory>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

enum class BorderStyle { None, FixedSingle, Sizable, FixedDialog };
enum class StartPosition { PlatformDefault, CentreScreen };

/// What a screen stores for itself. Width and height are those of the client area.
struct FormDesign {
  const char* name = "";
  std::u16string_view caption{};
  Twips width, height;
  BorderStyle border = BorderStyle::Sizable;
  bool minimiseBox = true;
  bool maximiseBox = true;
  bool startMaximised = false;
  StartPosition position = StartPosition::PlatformDefault;
  bool inTaskBar = true;
  Colour backColour = kButtonFace;
};

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

 protected:
  explicit Form(const FormDesign& design);
  QWidget* client() const override;
  Form& form() override { return *this; }
  Colour backColour() const override;

  /// The load event.
  virtual void Form_Load() {}

 private:
  friend class Application;
  friend class Control;
  friend class Timer;
  void load();

  struct Window;
  std::unique_ptr<Window> window_;
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
  static std::shared_ptr<Screen>& instance() {
    static std::shared_ptr<Screen> screen;
    return screen;
  }
};

}  // namespace forms
