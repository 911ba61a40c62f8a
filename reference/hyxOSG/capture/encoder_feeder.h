// Pipes frames to an encoder while the next ones are drawn.
#pragma once

#include "reference/hyxOSG/capture/encoder_process.h"
#include "reference/machinery/context/owner_process.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace hyxOSG {

/// Owns the encoder's process and one thread that writes to it. The thread touches nothing but frames and the process,
/// and takes no signals. At most `longestQueue` frames wait; `add` then waits for the encoder, which sets the pace.
/// A forked copy of the process adds nothing to the film and does not end it.
class EncoderFeeder {
public:
    using Frame = std::vector<unsigned char>;

    /// \throws std::runtime_error with the reason when the encoder cannot be started
    EncoderFeeder(std::vector<std::string> const& command, std::string const& file);
    /// Drops the frames that wait and ends the encoder.
    ~EncoderFeeder();

    /// A frame to fill; its memory is that of a written one where possible.
    Frame takeFrame();
    /// Queues a frame. A pending interrupt (Ctrl-C) ends the wait for room, and the frame is left out.
    /// \throws std::runtime_error when the encoder has failed
    void add(Frame frame);

    /// The number of frames that came into the queue.
    std::size_t numFrames() const { return m_numFrames; }

    /// Whether the encoder runs and has not failed.
    bool isActive();
    /// Writes the frames that wait and ends the encoder in order; a pending interrupt drops what still waits.
    /// \throws std::runtime_error when it fails or has failed
    void finish();

private:
    template <class Condition>
    bool waitUntil(Condition condition);
    void feed();
    void rethrowFailure();
    void joinThread(bool dropFrames);

    static constexpr std::size_t longestQueue = 3;

    EncoderProcess m_process;
    std::mutex m_mutex;
    /// Apart, so that a forked copy can leave it behind: its destructor would wait for the thread that was not copied.
    std::unique_ptr<std::condition_variable> m_changed = std::make_unique<std::condition_variable>();
    std::deque<Frame> m_waiting;
    std::vector<Frame> m_spare;
    std::exception_ptr m_failure;
    std::size_t m_numFrames = 0;
    bool m_writing = false;
    bool m_closing = false;
    std::thread m_thread;
    OwnerProcess m_owner;
};

} // namespace hyxOSG
