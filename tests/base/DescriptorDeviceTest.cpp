#include "XOV_Graphics/base/DescriptorDevice.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace xov {
namespace {

/// Both ends of a pipe, of which that for writing does not block.
class ImpatientPipe {
public:
  ImpatientPipe() {
    EXPECT_EQ(::pipe(ends_), 0);
    EXPECT_EQ(::fcntl(ends_[1], F_SETFL, O_NONBLOCK), 0);
  }
  ~ImpatientPipe() {
    closeWriting();
    ::close(ends_[0]);
  }
  ImpatientPipe(const ImpatientPipe&) = delete;
  ImpatientPipe& operator=(const ImpatientPipe&) = delete;

  int writing() const { return ends_[1]; }
  void closeWriting() {
    if (ends_[1] >= 0) ::close(ends_[1]);
    ends_[1] = -1;
  }

  QByteArray readToEnd() const {
    QByteArray all;
    char some[4096];
    for (ssize_t got = ::read(ends_[0], some, sizeof some); got > 0; got = ::read(ends_[0], some, sizeof some))
      all.append(some, got);
    return all;
  }

private:
  int ends_[2] = {-1, -1};
};

TEST(DescriptorDevice, waitsForAPipeThatIsFull) {
  // Far more than a pipe holds, in two pieces: the second goes past the buffer.
  const QByteArray first(1'000, 'a'), second(3'000'000, 'b');
  ImpatientPipe pipe;
  QByteArray arrived;
  std::thread reader([&] { arrived = pipe.readToEnd(); });
  {
    DescriptorDevice device(pipe.writing());
    EXPECT_EQ(device.write(first), first.size());
    EXPECT_EQ(device.write(second), second.size());
    EXPECT_TRUE(device.flush());
    EXPECT_EQ(device.failure(), 0);
  }
  pipe.closeWriting();
  reader.join();
  EXPECT_EQ(arrived.size(), first.size() + second.size());
  EXPECT_TRUE(arrived == first + second);
}

TEST(DescriptorDevice, takesNothingMoreAfterItsFirstFailure) {
  DescriptorDevice device(-1);
  EXPECT_EQ(device.write("kept until it is handed over"), 28);
  EXPECT_FALSE(device.flush());
  EXPECT_EQ(device.failure(), EBADF);
  EXPECT_EQ(device.errorString(), "Bad file descriptor");
  EXPECT_EQ(device.write("more"), -1);
  EXPECT_FALSE(device.flush());
}

} // namespace
} // namespace xov
