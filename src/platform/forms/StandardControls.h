#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace forms {

/// A picture box: a plain area of its back colour that holds other controls.
class PictureBox : public Control, public Container {
 public:
  PictureBox(Container& container, const Design& design);

 protected:
  QWidget* client() const override { return widget(); }
  Form& form() override { return screen(); }
  Colour backColour() const override { return backColour_; }

 private:
  Colour backColour_;
};

/// A frame without border and caption.
class Frame : public PictureBox {
 public:
  using PictureBox::PictureBox;
};

/// A text that the user can't change. Painted as it stands, without marks or markup.
class Label : public Control {
 public:
  Label(Container& container, const Design& design);
  const std::u16string& Caption() const { return caption_; }
  void Caption(std::u16string_view caption);

 private:
  std::u16string caption_;
};

/// A one-line text box, drawn in the window colours. With a length limit, typed and set text is cut
/// to it (0: no limit). Line breaks of a pasted text become blanks; nothing can be dropped on it.
class TextBox : public Control {
 public:
  TextBox(Container& container, const Design& design, int maxLength = 0);
  std::u16string Text() const;
  void Text(std::u16string_view text);
};

/// A tick box with the values 0, 1 and 2 (greyed); another value raises error 380.
class CheckBox : public Control {
 public:
  CheckBox(Container& container, const Design& design);
  std::int16_t Value() const { return value_; }
  /// Raises `Click`, nested in this call, when the value changes.
  void Value(std::int16_t value);

  Event<> Click;

 private:
  std::int16_t value_ = 0;
};

/// A drop-down list, drawn in the window colours: one of its entries is chosen, nothing can be
/// typed. Only a click or a key chooses; a turn of the wheel over the closed list changes nothing.
class ComboBox : public Control {
 public:
  ComboBox(Container& container, const Design& design);
  void AddItem(std::u16string_view entry);
  int ListCount() const;
  /// -1: nothing chosen.
  int ListIndex() const;
  /// Chooses an entry (-1: none; one that isn't there is error 380) and always raises `Click`,
  /// nested in this call, also when it is chosen already.
  void ListIndex(int index);
  /// The chosen entry, empty before any choice.
  std::u16string Text() const;

  Event<> Click;
};

/// The data of a drag. Format 1 is plain text.
inline constexpr std::int16_t kTextFormat = 1;
class DataObject {
 public:
  virtual ~DataObject() = default;
  virtual bool GetFormat(std::int16_t format) const = 0;
  virtual std::u16string GetData(std::int16_t format) const = 0;
  /// Puts a text in, as plain text.
  virtual void SetData(std::u16string_view text) = 0;
};

/// Effects of a drag.
inline constexpr std::int32_t kDropCopy = 1;
inline constexpr std::int32_t kDropMove = 2;
/// Drop modes of a control.
inline constexpr std::int16_t kDropNone = 0;
inline constexpr std::int16_t kDropManual = 1;

/// A list of plain texts, one of them selected, drawn in the window colours. A text wider than the
/// list is cut at its edge. A left press selects the entry under the pointer before `MouseDown`.
class ListBox : public Control {
 public:
  ListBox(Container& container, const Design& design);
  void Clear();
  void AddItem(std::u16string_view entry);
  int ListCount() const;
  /// -1: nothing selected.
  int ListIndex() const;
  /// Selects an entry (-1: none; one that isn't there is error 380).
  void ListIndex(int index);
  /// The selected entry, empty when none is.
  std::u16string Text() const;
  /// An entry; empty outside the list.
  std::u16string List(int index) const;

  std::int16_t OLEDropMode() const { return dropMode_; }
  void OLEDropMode(std::int16_t mode) { dropMode_ = mode; }
  /// Starts a drag of this list at once: raises `OLEStartDrag` and returns after the drop.
  void OLEDrag();

  Event<> DblClick;
  /// Button (1 left, 2 right, 4 middle), shift state, position in twips.
  Event<std::int16_t, std::int16_t, float, float> MouseDown;
  /// The drag's data, to be filled, and the effects that it allows.
  Event<DataObject&, std::int32_t&> OLEStartDrag;

 private:
  void rescaled() override;

  std::int16_t dropMode_ = kDropNone;
};

/// A picture.
class Image : public Control {
 public:
  /// `resource` names a picture that is built into the program: "tick".
  Image(Container& container, const Design& design, std::string_view resource);
};

/// A timer that runs from the moment its screen is shown; it isn't seen.
class Timer {
 public:
  Timer(Container& container, const char* name, int intervalMilliseconds);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  Event<> Tick;

 private:
  Form& screen_;
  struct Clock;
  std::unique_ptr<Clock> clock_;
};

}  // namespace forms
