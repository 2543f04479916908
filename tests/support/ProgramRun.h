#pragma once

#include <windows.h>

#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "NetUtilities/Module/Handle.h"

/// How a program has ended, and what it printed: UTF-8, lines ended by line feeds alone.
struct ProgramOutcome {
  DWORD exitCode = 0;
  std::string output;
  std::string error;
};

/// Full path of a program that is in the search path, by its file name; a full path is given back.
std::wstring FindProgram(const std::wstring& name);

/// A program that runs, and whose output is read meanwhile. It ends with this object at the latest.
class RunningProgram {
 public:
  RunningProgram(const std::wstring& name, const std::vector<std::wstring>& arguments);
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  /// The thread that it began with.
  DWORD ThreadId() const { return threadId_; }

  /// What it has printed so far.
  std::string Output() const { return output_.Text(); }

  /// Nobody reads its output from now on.
  void StopReading() { output_.Stop(); }

  /// Waits for its end. A program that takes longer than half a minute is ended, with the code 258 (WAIT_TIMEOUT).
  ProgramOutcome WaitForEnd();

 private:
  // Reads one of the program's streams on a thread of its own.
  class Stream {
   public:
    Stream();
    ~Stream();
    HANDLE ProgramsEnd() const { return write_.get(); }
    void Start();   // when the program has its end
    void Stop();    // closes the end for reading
    void Finish();  // waits for the end of the stream
    std::string Text() const;

   private:
    void Read(const std::stop_token& stop);

    Handle read_;
    Handle write_;
    std::jthread reader_;
    mutable std::mutex mutex_;
    std::string text_;
  };

  Stream output_;
  Stream error_;
  Handle process_;
  DWORD threadId_ = 0;
};

/// Runs a program to its end.
ProgramOutcome RunProgram(const std::wstring& name, const std::vector<std::wstring>& arguments);
