// The destructor is out of line, so that the class's virtual table is in the host library alone.
#include "host/du/UserData.h"

namespace du {

UserData::~UserData() = default;

}  // namespace du
