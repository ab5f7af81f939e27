// The pages that a user names: "1-3, 7".
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace dorvo::preview {

// Indexes in the order given, a page as often as it is named; nothing when the text is not such a list, or names a page
// that is not between 1 and `count`.
std::optional<std::vector<std::size_t>> page_ranges(const QString& text, std::size_t count);

}  // namespace dorvo::preview
