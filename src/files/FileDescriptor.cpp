#include "files/FileDescriptor.h"

#include <unistd.h>

namespace palvera {

FileDescriptor::~FileDescriptor()
{
    close();
}

bool FileDescriptor::close()
{
    const int number = std::exchange(m_number, -1);
    return number < 0 || ::close(number) == 0;
}

} // namespace palvera
