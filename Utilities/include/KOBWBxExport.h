#ifndef KOBWBxExport_h
#define KOBWBxExport_h

// Marks the public interface of the library. The library is built with hidden
// visibility, so only what carries this mark is exported from the shared object.
#if defined(KOBWBX_STATIC)
#define KOBWBX_API
#elif defined(_WIN32)
#if defined(KOBWBX_BUILDING)
#define KOBWBX_API __declspec(dllexport)
#else
#define KOBWBX_API __declspec(dllimport)
#endif
#else
#define KOBWBX_API __attribute__((visibility("default")))
#endif

#endif
