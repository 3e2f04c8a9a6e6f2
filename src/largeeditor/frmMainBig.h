#pragma once

#include <cstdint>

#include "keyeditor/KeyEditor.h"

/// The large editor: 108 keys on one page, the whole item list, six commands.
class frmMainBig : public KeyEditor {
 public:
  frmMainBig();

 protected:
  void Form_Load() override;

 private:
  void LoadList();
  /// Keys and key table from the layout file. Without a file nothing changes; any fault in it comes
  /// out of here, with what was applied before it left in place.
  void LoadButtons();
  void SaveButtons();
  void cmdSave_Click() override;
  void cmdSelCol_Click() override;
  void List1_DblClick() override;
  void MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) override;
};
