#include "arkin/store/Uuid.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace zn::arkin {

std::string newUuid() { return boost::uuids::to_string(boost::uuids::random_generator()()); }

} // namespace zn::arkin
