// Every layout that is built into the library.
#include <gtest/gtest.h>

#include "engine/layout_store.h"
#include "layouts/layouts.h"
#include "value/failure.h"

namespace dorvo {
namespace {

TEST(StoredLayouts, AllRead) {
  layouts::embed();
  ASSERT_FALSE(engine::stored_layout_names().empty());
  for (const std::string& name : engine::stored_layout_names()) {
    try {
      EXPECT_EQ(engine::stored_layout(name)->name, name);
    } catch (const value::Failure& failure) {
      ADD_FAILURE() << failure.description();
    }
  }
}

}  // namespace
}  // namespace dorvo
