// hosts/yearplan/SessionCacheUtility.cpp: cache utilities of a session that has no cache folder.
#include "hosts/yearplan/SessionCacheUtility.h"

#include <QObject>
#include <utility>

#include "refresh/RefreshYear.h"

namespace velkor {

class SessionCacheUtilities::Utility : public CacheUtility {
 public:
  Utility(const SessionCacheUtilities& session, WriteComplete writeComplete)
      : session_(session), writeComplete_(std::move(writeComplete)) {}

  void Start(const RefreshInputs& inputs) override {
    stopped_ = false;
    QMetaObject::invokeMethod(
        &receiver_, [this, inputs] { Run(inputs); }, Qt::QueuedConnection);
  }
  void Stop() override { stopped_ = true; }

 private:
  void Run(const RefreshInputs& inputs) {
    const RefreshRequest request{{inputs.viewYear, inputs.firstMonth},
                                 {inputs.cacheFile, inputs.workFile},
                                 inputs.folderId,
                                 inputs.storeId};
    const RefreshAnswer answer = RefreshYear(request, session_.outlook_, session_.files_,
                                             session_.locale_, [this] { return !stopped_; });
    // Copies: the completion may destroy this.
    const WriteComplete writeComplete = writeComplete_;
    const auto onError = session_.onError_;
    try {
      writeComplete(static_cast<short>(answer.result), answer.error);
    } catch (const Error& error) {
      onError(error);
    }
  }

  const SessionCacheUtilities& session_;
  WriteComplete writeComplete_;
  bool stopped_ = false;
  /// Its end drops a refresh that waits.
  QObject receiver_;
};

std::unique_ptr<CacheUtility> SessionCacheUtilities::Create(WriteComplete writeComplete) {
  return std::make_unique<Utility>(*this, std::move(writeComplete));
}

}  // namespace velkor
