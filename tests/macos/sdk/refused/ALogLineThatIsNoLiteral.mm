// error: expected '\)'
#include <os/log.h>

void refused(const char* line) {
    os_log(OS_LOG_DEFAULT, line);
}
