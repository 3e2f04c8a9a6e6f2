// The main function of tests that make screens: the toolkit's application stands, off screen, while
// they run. OFFSCREEN_SETUP names the file that tells the size and density of the screen.

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/forms/Application.h"

// What the toolkit and the font library keep until the process ends is no leak of ours.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  setenv("QT_QPA_PLATFORM", "offscreen:configfile=" OFFSCREEN_SETUP, 1);
  const forms::Application application;
  return RUN_ALL_TESTS();
}
