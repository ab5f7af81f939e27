// A connection whose network is cut ends by itself.
//
// No ODBC driver offers this under one name, and a text goes to its driver as it stands; so the sockets that a login
// opens are told how long the other side may be silent.
#pragma once

#include <set>

namespace dorvo::data {

class SocketLimits {
 public:
  SocketLimits();  // before the login
  // After it: a peer that does not answer within about 15 seconds counts as gone.
  void limit_new_sockets() const;

 private:
  std::set<int> before_;
};

}  // namespace dorvo::data
