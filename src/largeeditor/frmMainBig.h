#pragma once

#include <cstdint>

#include "keyeditor/KeyEditor.h"

/// The large editor: 108 keys on one page, the full item list, six commands.
class frmMainBig : public KeyEditor {
 public:
  frmMainBig();

 protected:
  void Form_Load() override;

 private:
  void LoadList();
  /// Fills keys and key table from the layout file. Without a file nothing changes. Raises the
  /// first fault in the file; what was read before it stays applied.
  void LoadButtons();
  void SaveButtons();
  void cmdSave_Click() override;
  void List1_DblClick() override;
  void MyButton1_OLEDragDrop(std::int16_t Index, forms::DataObject& Data) override;
};
