#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "keyeditor/KeyEditor.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Label.h"

/// The levelled editor: 63 keys on each of three levels, in a free layout view, where the user
/// drags products onto keys, or an autofill view, where the stock table fills the keys in id order.
class frmMain : public KeyEditor {
 public:
  frmMain();

 protected:
  void Form_Load() override;

 private:
  // Load and views (frmMain.cpp)
  void LoadDetailsIntoGrid();

  // Levels (frmMain_levels.cpp)
  void LoadLevels();
  void cbLevel_Click();
  void Changelevel(std::int16_t LevelNo);
  void ClearTheForm();

  // A level's layout file: load, save, reset (frmMain_layout.cpp)
  /// Fills keys and key table from the layout file of level `strScr`. Stops silently at the first
  /// fault in the file; raises a failure to open it. Without a file nothing changes.
  void LoadButtons(std::int16_t strScr);
  void SaveButtons();
  void cmdSave_Click() override;
  void cmdResetAll_Click();

  // Autofill (frmMain_autofill.cpp)
  void Check1_Click();
  void Setlabels(bool StrView);
  void ArrangeButtons();
  void LoadIDintoGrid(std::u16string_view strSql);
  void LoadDescriptionIntoButton();

  // Item list (frmMain_items.cpp)
  void LoadCombo();
  void LoadList(const std::u16string& strDesc);
  void cbDept_Click();
  void chkBarcode_Click();

  // Key assignment (frmMain_assignment.cpp)
  void List1_DblClick() override;
  void MyButton1_DblClick(std::int16_t Index);
  void MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) override;
  /// Splits a list entry: sets `strItemDesc` first, then `intItemId`. Raises what `listentry::idOf`
  /// raises.
  void SplitEntry(std::u16string_view entry);
  /// Puts the item of `strItemDesc` and `intItemId` on a key.
  void PlaceItem(std::int16_t key);

  // Start of the POS update (frmMain_update.cpp)
  void cmdUpdate_Click();

  MyCommandButton::MyButton cmdResetAll;
  MyCommandButton::MyButton cmdUpdate;
  forms::CheckBox Check1;
  forms::CheckBox chkBarcode;
  forms::Label lblLevel;
  forms::ComboBox cbLevel;
  forms::Label Label5;
  forms::TextBox txtName;
  forms::Label Label2;
  forms::ComboBox cbDept;
  forms::Label Label1;
  forms::Label Label3;  ///< hidden; its caption keeps the id of the item placed last

  /// True while the load runs. Setting a control's value calls its click handler; those of the two
  /// check boxes and the two combo boxes do nothing while this is true.
  std::int16_t LoadGuard = kFalse;
};
