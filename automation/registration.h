// The user's registration of the public classes, a text file that hosts look classes up in.
//
// One line a class: program id, class id, path of the shared library, with a tab between. The first line is a remark.
#pragma once

#include <string>

namespace dorvo::automation {

// Where it stands: XDG_DATA_HOME/dorvoform/classes, or ~/.local/share/dorvoform/classes. Fails with PathAccess when
// neither variable names a folder.
std::string registration_file();

// Writes the file whole, replacing what another library registered. Fails with CannotWrite or PathAccess.
void register_classes(const std::string& library);

// Removes the file when it is `library` that is registered; another one's, or none, is left alone. Fails with
// PathAccess when it cannot be removed.
void unregister_classes(const std::string& library);

}  // namespace dorvo::automation
