// The main function of tests that create screens: the toolkit's application runs off screen.
// OFFSCREEN_SETUP names the file with the size and density of the screen.

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/forms/Application.h"

// Memory that the font library keeps until the process ends is no leak of ours.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\n";
}

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  setenv("QT_QPA_PLATFORM", "offscreen:configfile=" OFFSCREEN_SETUP, 1);
  const forms::Application application;
  return RUN_ALL_TESTS();
}
