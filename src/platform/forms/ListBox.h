#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"
#include "platform/forms/DataObject.h"
#include "platform/forms/EntryParts.h"

namespace forms {

/// A list of plain texts, of which one can be selected, drawn in the window colours. A text wider
/// than the list is cut at its edge. A left press selects the entry under the pointer before it
/// raises `MouseDown`.
class ListBox : public Control {
 public:
  ListBox(Container& container, const Design& design, const EntryParts& parts = {});
  void Clear();
  void AddItem(std::u16string_view entry);
  int ListCount() const;
  /// -1: nothing selected.
  int ListIndex() const;
  /// Selects an entry (-1: none). An index outside the list raises InvalidPropertyValue.
  void ListIndex(int index);
  /// The selected entry, empty where none is selected.
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
  /// The drag's data and its allowed effects, both to be set by the handler.
  Event<DataObject&, std::int32_t&> OLEStartDrag;

 private:
  void rescaled() override;

  std::int16_t dropMode_ = kDropNone;
};

}  // namespace forms
