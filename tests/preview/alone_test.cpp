// A host that has no application of its own and no event loop.
#include <cstdlib>

#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

// The toolkit would end the process.
TEST(Screen, NoneIsAFailureThatNamesTheDisplay) {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(variable);
  const std::pair<const char*, const char*> cases[] = {
      {nullptr, "No window can be opened: DISPLAY is not set"},
      {"127.0.0.1:873", "No window can be opened: display 127.0.0.1:873 does not answer"},
  };
  for (const auto& [display, told] : cases) {
    if (display) setenv("DISPLAY", display, 1);
    try {
      start();
      ADD_FAILURE() << "a window system was found";
    } catch (const value::Failure& failure) {
      EXPECT_EQ(failure.description(), told);
    }
  }
  unsetenv("DISPLAY");
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

TEST_F(PreviewTest, WindowsLiveInRunAndInTurns) {
  PreviewWindow& window = shown();
  windows->turn();
  EXPECT_EQ(windows->open(), 1u);
  QTimer::singleShot(20, &window, [&window] { QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier); });
  windows->run();
  EXPECT_EQ(windows->open(), 0u);
  windows->run();  // returns at once
}

}  // namespace
}  // namespace dorvo::preview
