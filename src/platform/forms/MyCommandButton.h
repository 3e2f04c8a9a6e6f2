#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"
#include "platform/forms/DataObject.h"

namespace MyCommandButton {

/// The initial properties that only buttons have. Colours are 0x00BBGGRR.
struct ButtonDesign : forms::Design {
  forms::Colour transparentColour = forms::kWhite;
  bool showFocus = true;  ///< false only for key 3 of each editor
  bool isKey =
      false;        ///< a key of the key block; without a caption, screen readers call it "Key n"
  int extentX = 0;  ///< width and height in hundredths of a millimetre
  int extentY = 0;
};

/// The face and size of a button's text.
struct ButtonFont {
  std::u16string name = u"Arial";
  double size = 9.75;
  int weight = 400;
  int charset = 0;
};

/// The push button of the screens, for keys and commands: a coloured rectangle with a text, with
/// separate colours for rest, hover, focus and press. Reading a property returns the value last
/// set.
class MyButton : public forms::Control {
 public:
  static constexpr forms::Colour kDefaultBackColour = forms::kButtonFace;
  static constexpr forms::Colour kDefaultForeColour = forms::kButtonText;
  static constexpr forms::Colour kStoredBackColourDown = 15133676;  ///< 0xE6EBEC

  /// One of the button's colours: `key.backcolor()` reads it, `key.backcolor(colour)` sets it.
  class StateColour {
   public:
    /// `unset` is the value read until a colour is set; `stored` is an initial colour, which counts
    /// as set.
    StateColour(MyButton& button, forms::Colour unset, std::optional<forms::Colour> stored = {})
        : button_(button), unset_(unset), set_(stored) {}

    forms::Colour operator()() const { return set_.value_or(unset_); }
    void operator()(forms::Colour colour);
    /// The colour to paint: the colour at rest until this one is set.
    forms::Colour painted(const StateColour& atRest) const { return set_.value_or(atRest()); }

   private:
    MyButton& button_;
    forms::Colour unset_;
    std::optional<forms::Colour> set_;
  };

  MyButton(forms::Container& container, const ButtonDesign& design, std::int16_t index = 0);

  StateColour backcolor{*this, kDefaultBackColour};
  StateColour forecolor{*this, kDefaultForeColour};
  StateColour backcolordown{*this, kDefaultBackColour, kStoredBackColourDown};
  StateColour backcolorfocus{*this, kDefaultBackColour};
  StateColour backcolorover{*this, kDefaultBackColour};
  StateColour forecolordown{*this, kDefaultForeColour};
  StateColour forecolorfocus{*this, kDefaultForeColour};
  StateColour forecolorover{*this, kDefaultForeColour};

  const std::u16string& caption() const { return caption_; }
  void caption(std::u16string_view text);
  const ButtonFont& font() const { return font_; }
  /// Sets the face name and nothing else; any text is accepted.
  void font(std::u16string_view face);
  std::int16_t oledropmode() const { return oledropmode_; }
  /// 1 lets the user drop dragged text on the button, which raises `OLEDragDrop`.
  void oledropmode(std::int16_t mode);

  // Stored properties, which do not change while the program runs. Extents are the width and height
  // in hundredths of a millimetre.
  bool showfocus() const { return showfocus_; }
  forms::Colour transparentcolor() const { return transparentcolor_; }
  std::int32_t depthevent() const { return 1; }
  int extentx() const { return extentx_; }
  int extenty() const { return extenty_; }

  forms::Event<> GotFocus;
  /// Data, effect, button, shift, position in twips.
  forms::Event<forms::DataObject&, std::int32_t&, std::int16_t, std::int16_t, float, float>
      OLEDragDrop;
  /// A press and release on the button.
  forms::Event<> Click;
  /// A double press; its first press has raised a `Click`, its second raises none.
  forms::Event<> DblClick;
  /// The pointer enters the button.
  forms::Event<> MouseOver;

  /// Called for screen readers: true for the key that the screen's commands act on. The key isn't
  /// painted differently.
  std::function<bool()> isCurrent;

 private:
  void applyFont();
  void rescaled() override;

  std::u16string caption_;
  ButtonFont font_;
  std::int16_t oledropmode_ = forms::kDropNone;
  bool showfocus_;
  forms::Colour transparentcolor_;
  int extentx_;
  int extenty_;
};

}  // namespace MyCommandButton
