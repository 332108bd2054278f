// Symbol visibility of the host library, which the viewer and every plug-in share.
#pragma once

#if defined(_WIN32)
#if defined(HOST_BUILDING)
#define HOST_API __declspec(dllexport)
#else
#define HOST_API __declspec(dllimport)
#endif
#else
#define HOST_API __attribute__((visibility("default")))
#endif
