// Symbol visibility of the component.
#pragma once

#if defined(_WIN32)
#if defined(TOUCH_BUILDING)
#define TOUCH_API __declspec(dllexport)
#else
#define TOUCH_API __declspec(dllimport)
#endif
#else
#define TOUCH_API __attribute__((visibility("default")))
#endif
