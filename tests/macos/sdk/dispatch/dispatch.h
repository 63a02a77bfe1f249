#pragma once

typedef struct dispatch_queue_s* dispatch_queue_t;
dispatch_queue_t dispatch_get_main_queue(void);

// known
typedef void (*dispatch_function_t)(void* context);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
