// Symbol visibility of the component. Which of these names the plug-in exports is in touch/exports.map.
#pragma once

#if defined(_WIN32)
#if defined(TOUCH_BUILDING)
#define TOUCH_API
#else
#define TOUCH_API __declspec(dllimport)
#endif
#else
#define TOUCH_API __attribute__((visibility("default")))
#endif
