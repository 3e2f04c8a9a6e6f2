#pragma once

#include <cstdint>

#include "platform/forms/FlexCellGrid.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/MyCommandButton.h"
#include "platform/forms/PictureBox.h"

/// The sheet in which the user enters a new product: a grid of eight labelled rows with one value
/// each. It passes the added product to the editor in `mdMain::strAddedDesc` and `strAddedId`.
class frmAddPlu : public forms::Form {
 public:
  frmAddPlu();

 protected:
  void Form_Load() override;

 private:
  void SetupAddGrid();
  void LoadCombo();
  void Grid1_Click();
  void Grid1_ComboClick(std::int16_t Index);
  void cmdSave_Click();
  void cmdClose_Click();
  /// Fills the free stock row with the lowest id, then the flags of its product row, in two
  /// independent updates: a failure of the second doesn't undo the first. Without a free row it
  /// shows a message and writes nothing.
  void AddProduct();

  forms::PictureBox Picture1;
  MyCommandButton::MyButton cmdSave;
  MyCommandButton::MyButton cmdClose;
  forms::Label lblDeptId;  ///< hidden; its caption is the id of the chosen department, "0" for none
  FlexCell::Grid Grid1;
};
