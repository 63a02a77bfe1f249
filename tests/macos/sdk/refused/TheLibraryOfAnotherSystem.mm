// error: 'memory_resource' file not found
// GCC's library has it; that of the oldest Mac has not.
#include <memory_resource>
