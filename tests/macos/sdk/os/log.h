#pragma once

// A macro there too, whose format is a literal. Its real expansion is the compiler's business; here the format and its
// arguments are checked as those of printf are.
struct os_log_s;
typedef struct os_log_s* os_log_t;
extern struct os_log_s _os_log_default;
#define OS_LOG_DEFAULT (&_os_log_default)

void tests_os_log(os_log_t log, const char* format, ...) __attribute__((format(os_log, 2, 3)));
#define os_log(log, ...) tests_os_log(log, "" __VA_ARGS__)
