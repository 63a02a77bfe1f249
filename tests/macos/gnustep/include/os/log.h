#pragma once

// The system's log, whose lines a test can read. As there, a format is a literal, and a text is hidden that is not
// marked public.

struct os_log_s;
typedef struct os_log_s* os_log_t;
#define OS_LOG_DEFAULT static_cast<os_log_t>(nullptr)

void standInForLog(os_log_t log, const char* format, ...);
#define os_log(log, ...) standInForLog(log, "" __VA_ARGS__)
