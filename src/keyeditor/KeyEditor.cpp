#include "keyeditor/KeyEditor.h"

#include "layoutdata/LayoutFile.h"
#include "platform/process/Process.h"
#include "platform/runtime/Conversion.h"
#include "shared/mdOpenDatabase.h"

KeyEditor::KeyEditor(const KeyEditorDesign& design)
    : Form(design.form),
      Picture1(*this, design.Picture1),
      MyButton1(Picture1, design.keyCount, design.key),
      Grid1(*this, design.Grid1, design.keyCount, 2),
      List1(*this, design.List1, design.entries),
      txtColour(*this, design.txtColour),
      txtFontColour(*this, design.txtFontColour),
      cmdSelCol(*this, design.cmdSelCol),
      cmdFontColour(*this, design.cmdFontColour),
      cmdResetColor(*this, design.cmdResetColor),
      cmdCopy(*this, design.cmdCopy),
      cmdSave(*this, design.cmdSave),
      cmdClose(*this, design.cmdClose) {
  for (std::int16_t i = 0; i < MyButton1.count(); ++i) {
    MyButton1(i).Click = [this, i] { MyButton1_Click(i); };
    MyButton1(i).GotFocus = [this, i] { MyButton1_GotFocus(i); };
    MyButton1(i).MouseOver = [this, i] { MyButton1_MouseOver(i); };
    MyButton1(i).isCurrent = [this, i] { return CurrentKey == i; };
    MyButton1(i).OLEDragDrop = [this, i](forms::DataObject& data, std::int32_t&, std::int16_t,
                                         std::int16_t, float,
                                         float) { MyButton1_OLEDragDrop(i, data); };
  }
  List1.MouseDown = [this](std::int16_t button, std::int16_t shift, float x, float y) {
    List1_MouseDown(button, shift, x, y);
  };
  List1.OLEStartDrag = [this](forms::DataObject& data, std::int32_t& effects) {
    List1_OLEStartDrag(data, effects);
  };
  List1.DblClick = [this] { List1_DblClick(); };
  cmdSelCol.Click = [this] { cmdSelCol_Click(); };
  cmdFontColour.Click = [this] { cmdFontColour_Click(); };
  cmdResetColor.Click = [this] { cmdResetColor_Click(); };
  cmdCopy.Click = [this] { cmdCopy_Click(); };
  cmdSave.Click = [this] { cmdSave_Click(); };
  cmdClose.Click = [this] { cmdClose_Click(); };
}

void KeyEditor::LoadGrid() {
  for (std::int16_t row = 0; row < MyButton1.count(); ++row)
    Grid1.TextMatrix(row, 0, runtime::toText(row));
}

void KeyEditor::LoadKey(std::int16_t key, const layoutdata::KeyLine& line) {
  MyButton1(key).caption(line.Caption());
  MyButton1(key).backcolor(line.BackColour());
  MyButton1(key).font(line.FontColour());  // the colour field sets the typeface: contract
}

void KeyEditor::WriteLayoutFile(std::u16string_view path) {
  layoutdata::LayoutWriter file(path);
  for (std::int16_t key = 0; key < MyButton1.count(); ++key) {
    file.write({.KeyIndex = key,
                .ProductId = Grid1.TextMatrix(key, 1),
                .Caption = MyButton1(key).caption(),
                .BackColour = MyButton1(key).backcolor(),
                .FontColour = MyButton1(key).forecolor()});
  }
  file.close();
}

void KeyEditor::MakeKeysDropTargets() {
  for (auto& key : MyButton1) key->oledropmode(forms::kDropManual);
}

// Any button starts the drag at once, without waiting for the pointer to move.
void KeyEditor::List1_MouseDown(std::int16_t, std::int16_t, float, float) {
  List1.OLEDrag();
}

void KeyEditor::List1_OLEStartDrag(forms::DataObject& Data, std::int32_t& AllowedEffects) {
  AllowedEffects = forms::kDropMove;
  Data.SetData(List1.Text());
}

void KeyEditor::MyButton1_Click(std::int16_t Index) {
  if (CopyMode != kTrue) {
    CurrentKey = MyButton1(Index).Index();
    return;
  }
  SetButtonColour(CopyBackColour, Index);
  SetFontButtonColour(CopyFontColour, Index);
}

// A layout file sets only a key's back colour. Its focus and hover colours are copied from that
// when the key first gets the focus or the pointer (contract).
void KeyEditor::MyButton1_GotFocus(std::int16_t Index) {
  MyButton1(Index).backcolorfocus(MyButton1(Index).backcolor());
}

void KeyEditor::MyButton1_MouseOver(std::int16_t Index) {
  const std::u16string colour = runtime::toText(MyButton1(Index).backcolor());
  MyButton1(Index).backcolorover(runtime::toLong(colour));
}

void KeyEditor::cmdClose_Click() {
  mdOpenDatabase::CloseDatabase();
  process::endProgram();
}
