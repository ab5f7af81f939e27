// A host that has no application of its own and no event loop.
#include <cstdlib>

#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

TEST(Preview, NeedsAScreen) {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) unsetenv(variable);
  EXPECT_THROW(start(), value::Failure);
  EXPECT_EQ(open_windows(), 0u);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

TEST_F(PreviewTest, WindowsLiveInRunAndInTurns) {
  PreviewWindow& window = shown();
  turn();
  EXPECT_EQ(open_windows(), 1u);
  QTimer::singleShot(20, &window, [&window] { QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier); });
  run();
  EXPECT_EQ(open_windows(), 0u);
  run();  // returns at once
}

}  // namespace
}  // namespace dorvo::preview
