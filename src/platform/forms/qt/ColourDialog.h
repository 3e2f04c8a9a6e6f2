#pragma once

#include <QColorDialog>

namespace forms::qt {

/// The toolkit's colour dialog. Where it would not fit on a desktop of high pixel density it has
/// smaller spacing and a smaller font.
class ColourDialog final : public QColorDialog {
 public:
  explicit ColourDialog(QWidget* parent);

 private:
  bool fits() const;
};

}  // namespace forms::qt
