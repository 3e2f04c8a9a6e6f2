#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "layoutdata/KeyRecord.h"
#include "platform/files/FileSystemObject.h"
#include "platform/forms/CommonDialog.h"
#include "platform/forms/DataObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/MSHFlexGrid.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TextBox.h"
#include "platform/runtime/AutoObject.h"

/// The design values of one editor for the controls that both editors have.
struct KeyEditorDesign {
  forms::FormDesign form;
  forms::Design Picture1;
  std::int16_t keyCount = 0;
  MyCommandButton::ButtonDesign (*key)(std::int16_t index) = nullptr;
  forms::Design Grid1;
  forms::Design List1;
  forms::EntryParts entries;  ///< of `List1`
  forms::Design txtColour;
  forms::Design txtFontColour;
  MyCommandButton::ButtonDesign cmdSelCol;
  MyCommandButton::ButtonDesign cmdFontColour;
  MyCommandButton::ButtonDesign cmdResetColor;
  MyCommandButton::ButtonDesign cmdCopy;
  MyCommandButton::ButtonDesign cmdSave;
  MyCommandButton::ButtonDesign cmdClose;
};

/// True and false in the screens' 16-bit integer fields.
inline constexpr std::int16_t kTrue = -1;
inline constexpr std::int16_t kFalse = 0;

/// The common part of the two key editors. The keys are the model: a key holds its caption and
/// colours itself, and the hidden table `Grid1` holds what a key can't show, one row a key: in
/// column 0 its index, in column 1 its product id, and in column 2, which only the autofill view
/// adds, the description of its stock row.
class KeyEditor : public forms::Form {
 protected:
  explicit KeyEditor(const KeyEditorDesign& design);

  /// Fills column 0 of the key table with the keys' indexes.
  void LoadGrid();
  /// Applies a line's caption, back colour and typeface to a key, in this order. Fields applied
  /// before a fault stay applied. Field 4 is written as the font colour but read as the typeface
  /// name, so a file never restores font colours (contract).
  void LoadKey(std::int16_t key, const layoutdata::KeyLine& line);
  /// Writes all keys, empty ones too, to the layout file at `path`. Opening the file discards its
  /// old content. Raises what `layoutdata::LayoutWriter` raises.
  void WriteLayoutFile(std::u16string_view path);
  /// Makes every key a target of drags.
  void MakeKeysDropTargets();

  void List1_MouseDown(std::int16_t Button, std::int16_t Shift, float x, float y);
  void List1_OLEStartDrag(forms::DataObject& Data, std::int32_t& AllowedEffects);
  void MyButton1_Click(std::int16_t Index);
  void MyButton1_GotFocus(std::int16_t Index);
  void MyButton1_MouseOver(std::int16_t Index);
  void cmdSelCol_Click();
  void SelectButCol();
  void cmdFontColour_Click();
  void cmdResetColor_Click();
  void cmdCopy_Click();
  void cmdClose_Click();

  /// Each editor defines these in its own way.
  virtual void MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) = 0;
  virtual void List1_DblClick() = 0;
  virtual void cmdSave_Click() = 0;

  /// Sets the back colour of key `i` in all its states from decimal text; an empty text changes
  /// nothing.
  void SetButtonColour(const std::u16string& strColour, std::int16_t i);
  /// Sets the text colour of key `i` in all its states from decimal text; an empty text changes
  /// nothing.
  void SetFontButtonColour(const std::u16string& strColour, std::int16_t i);

  forms::PictureBox Picture1;
  forms::ControlArray<MyCommandButton::MyButton> MyButton1;
  MSHierarchicalFlexGridLib::MSHFlexGrid Grid1;
  forms::ListBox List1;
  forms::TextBox txtColour;
  forms::TextBox txtFontColour;
  MyCommandButton::MyButton cmdSelCol;
  MyCommandButton::MyButton cmdFontColour;
  MyCommandButton::MyButton cmdResetColor;
  MyCommandButton::MyButton cmdCopy;
  MyCommandButton::MyButton cmdSave;
  MyCommandButton::MyButton cmdClose;
  MSComDlg::CommonDialog CommonDialog1;

  std::int16_t CurrentKey = 0;     ///< index of the key last clicked, on which the commands act
  std::int16_t CopyMode = kFalse;  ///< `kTrue` while copy mode is on
  /// Colours kept by copy mode as decimal text, empty while it is off.
  std::u16string CopyBackColour;
  std::u16string CopyFontColour;
  std::u16string strItemDesc;  ///< description of the product being assigned
  std::int16_t intItemId = 0;  ///< id of the product being assigned
  runtime::AutoObject<Scripting::FileSystemObject> FileSystem;
};
