#include "host/du/UserData.h"

namespace du {

UserData::~UserData() = default;

}  // namespace du
