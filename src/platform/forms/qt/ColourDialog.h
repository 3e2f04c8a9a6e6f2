#pragma once

#include <QColorDialog>

namespace forms::qt {

/// The toolkit's colour dialog. Where it would not fit a dense desktop it is laid out closer and
/// with a smaller font.
class ColourDialog final : public QColorDialog {
 public:
  explicit ColourDialog(QWidget* parent);

 private:
  bool fits() const;
};

}  // namespace forms::qt
