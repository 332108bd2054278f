#include "host/hxk/Observable.h"

namespace hxk {

Observable::~Observable() = default;

}  // namespace hxk
