// An embedded database file being written. It stands beside its target under another name until commit(), so that
// the target appears whole or not at all.
//
// Failures: CannotWrite with the target's name and the reason.
#pragma once

#include <map>
#include <string>

#include "practice/row.h"

struct sqlite3;
struct sqlite3_stmt;

namespace dorvo::practice {

class PracticeFile {
 public:
  // A new database with all tables, empty.
  explicit PracticeFile(std::string target);
  ~PracticeFile();  // not committed: removes what was written
  PracticeFile(const PracticeFile&) = delete;
  PracticeFile& operator=(const PracticeFile&) = delete;

  void insert(const Row& row);
  void commit();

 private:
  void run(const std::string& sql);
  sqlite3_stmt* statement(const Table& table);
  void close();
  [[noreturn]] void fail(const std::string& reason) const;

  std::string target_;
  std::string beside_;
  sqlite3* database_ = nullptr;
  std::map<const Table*, sqlite3_stmt*> inserts_;
};

}  // namespace dorvo::practice
