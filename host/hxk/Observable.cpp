// The destructor is out of line, so that the class's virtual table is in the host library alone.
#include "host/hxk/Observable.h"

namespace hxk {

Observable::~Observable() = default;

}  // namespace hxk
