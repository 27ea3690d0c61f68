#pragma once

#include "async/Clock.h"
#include "transfer/Journal.h"

#include <exception>

namespace palvera {

class API;

/// The end of an upload of which storage has every part: the platform puts them together and, for a deliverable, files
/// what comes of it. Lives on the strand of the run that awaits it.
class Completion {
public:
    /// `journal` has every part. Everything referred to outlives it.
    Completion(API& api, Clock& clock, const Journal& journal) : m_api(api), m_clock(clock), m_journal(journal) {}

    /// Returns once the platform has the file whole and, for a deliverable, filed; a quarter of an hour at most is left
    /// to it for that, and it is asked again where a few of its answers get lost. Throws UploadForgotten when it has no
    /// such upload; refusals, its question whether the file is meant, and transport failures pass through.
    Task<void> perform();

private:
    Task<std::exception_ptr> attempt();
    Task<std::exception_ptr> fileIt(std::exception_ptr failure);
    Task<std::exception_ptr> findInBin(std::exception_ptr failure);
    Task<bool> isInBin() const;

    API& m_api;
    Clock& m_clock;
    const Journal& m_journal;
};

} // namespace palvera
