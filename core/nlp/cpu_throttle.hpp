// How many threads an engine for Chinese texts may start.
//
// The embedded finders run on the caller's thread and start none, so they have
// nothing to throttle; the limit binds an engine that does start threads.
#pragma once

namespace core::nlp {

// Sets the limit to one, so that a batch of many texts leaves the other cores to
// the application. May be called from any thread, any number of times.
void apply_zh_nlp_cpu_throttle();

// The limit; 0 says that none is set.
unsigned zh_nlp_thread_limit();

}  // namespace core::nlp
