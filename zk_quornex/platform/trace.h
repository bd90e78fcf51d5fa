// The agent's trace functions and the per-thread record that says where the
// next trace line comes from. Safe on any thread.
//
// Levels: 1 marks failures, 2 null arguments, 3 routine tracing. A level that
// is switched off costs the call, a load and a branch: nothing is formatted.
#ifndef ZK_PLATFORM_TRACE_H
#define ZK_PLATFORM_TRACE_H

namespace NS_CORBA {

// Where the next trace line of this thread comes from. The texts must live as
// long as the process: writers store literals.
struct TraceRecord {
  const char* file = "unknown";
  const char* function = "unknown";
  int line = 0;
};

// The calling thread's record; never null, owned by the platform.
TraceRecord* GetTss();

// Writes text as it stands.
void TaDebug(int level, const char* text);

// Writes a text formatted as printf does.
void TaDebugWithPara(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Writes a plain trace line, formatted as printf does; it has no level.
void TaTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Fills the calling thread's record. Every trace line is preceded by this.
inline void SetTraceOrigin(const char* file, int line, const char* function = "unknown") {
  TraceRecord* record = GetTss();
  record->file = file;
  record->function = function;
  record->line = line;
}

}  // namespace NS_CORBA

#endif
