#pragma once

#include "platform/forms/Form.h"
#include "platform/forms/Image.h"
#include "platform/forms/Label.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/Timer.h"

/// The notice after a layout was saved. It shows for 750 ms, ignores input and unloads itself; each
/// use creates a new instance.
class frmSaved : public forms::Form {
 public:
  frmSaved();

 private:
  void Timer_Timer();

  forms::PictureBox Frame1;
  forms::Image Image1;
  forms::Label lblSaved;
  forms::Timer Timer;
};
