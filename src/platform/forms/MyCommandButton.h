#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"
#include "platform/forms/DataObject.h"

namespace MyCommandButton {

/// What a screen stores for a button beside its place. The colours are 0x00BBGGRR.
struct ButtonDesign : forms::Design {
  forms::Colour transparentColour = forms::kWhite;
  bool showFocus = true;  ///< stored on every instance but key 3 of each editor
  bool isKey = false;     ///< a key of the key block: named "Key n" where its caption is empty
  int extentX = 0;        ///< width and height in hundredths of a millimetre
  int extentY = 0;
};

/// The face and size of a button's text. A text assigned to it sets the face name and nothing else.
struct ButtonFont {
  std::u16string name = u"Arial";
  double size = 9.75;
  int weight = 400;
  int charset = 0;
};

/// The push button of the whole system, keys and commands alike: a coloured rectangle with a text,
/// with separate colours for rest, pointer, focus and press. A property reads as it was set.
class MyButton : public forms::Control {
 public:
  static constexpr forms::Colour kDefaultBackColour = forms::kButtonFace;
  static constexpr forms::Colour kDefaultForeColour = forms::kButtonText;
  static constexpr forms::Colour kStoredBackColourDown = 15133676;  ///< 0xE6EBEC

  MyButton(forms::Container& container, const ButtonDesign& design, std::int16_t index = 0);
  ~MyButton() override;

  const std::u16string& caption() const { return caption_; }
  forms::Colour backcolor() const { return backcolor_; }
  forms::Colour forecolor() const { return forecolor_; }
  forms::Colour backcolordown() const { return backcolordown_; }
  forms::Colour backcolorfocus() const { return backcolorfocus_.value_or(kDefaultBackColour); }
  forms::Colour backcolorover() const { return backcolorover_.value_or(kDefaultBackColour); }
  forms::Colour forecolordown() const { return forecolordown_.value_or(kDefaultForeColour); }
  forms::Colour forecolorfocus() const { return forecolorfocus_.value_or(kDefaultForeColour); }
  forms::Colour forecolorover() const { return forecolorover_.value_or(kDefaultForeColour); }
  const ButtonFont& font() const { return font_; }
  std::int16_t oledropmode() const { return oledropmode_; }
  bool showfocus() const { return showfocus_; }
  forms::Colour transparentcolor() const { return transparentcolor_; }
  std::int32_t depthevent() const { return 1; }
  bool isKey() const { return isKey_; }
  int extentx() const { return extentx_; }
  int extenty() const { return extenty_; }

  void caption(std::u16string_view text);
  void backcolor(forms::Colour colour);
  void forecolor(forms::Colour colour);
  void backcolordown(forms::Colour colour);
  void backcolorfocus(forms::Colour colour);
  void backcolorover(forms::Colour colour);
  void forecolordown(forms::Colour colour);
  void forecolorfocus(forms::Colour colour);
  void forecolorover(forms::Colour colour);
  /// Sets the face name, whatever the text is.
  void font(std::u16string_view face);
  /// 1 makes the button a target of drags with text, handled by `OLEDragDrop`.
  void oledropmode(std::int16_t mode);

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

 private:
  class Face;  // the widget
  Face& face() const;
  void applyFont();
  void showCaption();
  /// Sets a colour, whether or not anything has set it before.
  template <class Held>
  void setColour(Held& held, forms::Colour colour);
  void rescaled() override;

  std::u16string caption_;
  forms::Colour backcolor_ = kDefaultBackColour;
  forms::Colour forecolor_ = kDefaultForeColour;
  forms::Colour backcolordown_ = kStoredBackColourDown;
  // A state colour that nothing has set reads as the default, and is painted as the colour at rest.
  std::optional<forms::Colour> backcolorfocus_;
  std::optional<forms::Colour> backcolorover_;
  std::optional<forms::Colour> forecolordown_;
  std::optional<forms::Colour> forecolorfocus_;
  std::optional<forms::Colour> forecolorover_;
  ButtonFont font_;
  std::int16_t oledropmode_ = forms::kDropNone;
  bool showfocus_;
  bool isKey_;
  forms::Colour transparentcolor_;
  int extentx_;
  int extenty_;
};

}  // namespace MyCommandButton
