#pragma once

#include <QByteArray>
#include <QIODevice>

namespace xov {

/// Writes to an open descriptor of the system, which it does not close, through a buffer. From the first failure on
/// it takes nothing more; errorString() is the system's text of it.
class DescriptorDevice final : public QIODevice {
public:
  explicit DescriptorDevice(int descriptor);

  /// Hands over what is in the buffer; false when not all that was written has arrived.
  bool flush();
  /// The system's number of the first failure, or 0.
  int failure() const { return failure_; }

  bool isSequential() const override { return true; }

protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* data, qint64 size) override;

private:
  bool handOver(const char* data, qint64 size);

  int descriptor_;
  int failure_ = 0;
  QByteArray buffer_;
};

} // namespace xov
