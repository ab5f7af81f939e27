// The library's state in the process, and how an entry of it ends.
#pragma once

#include <new>
#include <string>
#include <vector>

#include "automation/com.h"
#include "automation/job.h"
#include "value/failure.h"

namespace dorvo::automation {

// Makes the report classes and stored layouts known, and the job what prints while no preview is registered. Does so
// once.
void start_library();

// The job that is being put together or runs.
Job& job();
// Ends it and starts an empty one.
void end_job();

// Messages of the job that ended last.
const std::vector<std::string>& last_messages();

// One line on the entry that failed last.
const std::string& last_error();
HRESULT fail(HRESULT code, std::string line);

// Runs the body of an entry: S_OK, or `code` with the failure's line kept. Nothing is thrown at a host.
template <class Body>
HRESULT guarded(HRESULT code, Body body) {
  try {
    body();
    return S_OK;
  } catch (const value::Failure& failure) {
    return fail(code, failure.description());
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    return fail(E_FAIL, error.what());
  }
}

}  // namespace dorvo::automation
