// A filter writes finished pages to a file format. It reads pages only, never a report or a database.
//
// begin(), page() for each page in order, end(). Pages may be dropped by the caller after page() returns, so a long
// list needs no memory for them. Nothing stands at the target before end() has flushed, closed and renamed the file;
// a filter that is destroyed without end() leaves nothing behind. Fails with CannotWrite, naming file and reason.
// The same pages give the same bytes.
#pragma once

#include <string>
#include <vector>

#include "engine/pages.h"

namespace dorvo::export_ {

class Filter {
 public:
  virtual ~Filter() = default;
  virtual void begin() = 0;
  virtual void page(const engine::PagePtr& page) = 0;
  virtual void end() = 0;

  // All pages of a finished report.
  void Export(const engine::Pages& pages) {
    begin();
    for (const engine::PagePtr& page_ptr : pages) page(page_ptr);
    end();
  }

  // What the officer should know of the last export and no failure was, one line each: controls that met in one cell,
  // characters that the format has not. Each is told once, however many pages it happens on.
  const std::vector<std::string>& Messages() const { return messages_; }

 protected:
  std::vector<std::string> messages_;
};

}  // namespace dorvo::export_
