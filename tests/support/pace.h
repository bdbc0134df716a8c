#pragma once

/// How fast the tests run here, for those that do something many times or in a given time.
namespace TestSupport {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Calls, and programs to start, take so many times as long with Wine.
#ifdef _WIN32
inline constexpr int kSlowness = 4;
#else
inline constexpr int kSlowness = 1;
#endif

} // namespace TestSupport
