#pragma once

namespace palvera {

/// Makes libcurl ready for use. To be called before anything else of it, any number of times, on any thread. Throws
/// std::bad_alloc.
void startCurl();

} // namespace palvera
