// A system that cannot create threads. This can be caused only on POSIX: by asking for stacks larger than the address
// space.
#include "async/support/AsyncTest.h"

#include <pthread.h>

#include <stdexcept>

namespace {

// Creating threads fails during its lifetime.
class NoThreads {
public:
    NoThreads() {
        pthread_getattr_default_np(&m_saved);
        pthread_attr_t huge;
        pthread_getattr_default_np(&huge);
        const bool isSet =
            pthread_attr_setstacksize(&huge, std::size_t{1} << 50) == 0 && pthread_setattr_default_np(&huge) == 0;
        pthread_attr_destroy(&huge);
        if (!isSet) {
            throw std::runtime_error("the size of new stacks cannot be set");
        }
    }
    ~NoThreads() {
        pthread_setattr_default_np(&m_saved);
        pthread_attr_destroy(&m_saved);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t m_saved;
};

class NoThread : public AsyncTest {};

TEST_F(NoThread, ForAnAnnouncedFrameFailsTheAnnouncement) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    {
        const NoThreads none;
        EXPECT_EQ(async.announce(timeOf(2), yuy3()), kExceptionResult);
        EXPECT_EQ(async.announce(timeOf(2), yuy3()), kExceptionResult) << "the lock is still held";
    }
    EXPECT_EQ(logged("xAsyncImportEntry: FATAL: Unhandled exception during aiInitiateAsyncRead (0): Resource "
                     "temporarily unavailable"),
              2);
    EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, aiNoError);
    EXPECT_EQ(logged("REQUEST: ERROR: Frame not found: 2, frameTime: 20321280000"), 1);
    expectFrame(async, clip, 2);
}

TEST_F(NoThread, ForAnUnannouncedFrameFailsTheCollection) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    {
        const NoThreads none;
        EXPECT_EQ(async.collect(timeOf(2), yuy3()).result, kExceptionResult);
    }
    EXPECT_EQ(logged("xAsyncImportEntry: FATAL: Unhandled exception during aiGetFrame (3): Resource temporarily "
                     "unavailable"),
              1);
    expectFrame(async, clip, 2);
}

TEST_F(NoThread, DoesNotAffectRunningDecodes) {
    hostkit::ClipSession& clip = openClip(smallVideo());
    AsyncClip& async = openAsync(clip);
    async.announce(timeOf(1), yuy3());
    {
        const NoThreads none;
        EXPECT_EQ(async.announce(timeOf(2), yuy3()), kExceptionResult);
        EXPECT_EQ(async.collect(timeOf(1), yuy3()).result, aiNoError);
    }
    expectFrame(async, clip, 2);
}

}  // namespace
