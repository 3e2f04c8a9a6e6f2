#include "platform/forms/CommonDialog.h"

#include "platform/process/Host.h"

namespace MSComDlg {

void CommonDialog::ShowColor() {
  if (const auto chosen = process::host().showColourDialog()) color_ = *chosen;
}

}  // namespace MSComDlg
