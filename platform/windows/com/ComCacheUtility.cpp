// platform/windows/com/ComCacheUtility.cpp: starts, hears and ends the utility's process.
#include "platform/windows/com/ComCacheUtility.h"

#include <optional>
#include <utility>

#include "VelkorCacheUtility.h"
#include "platform/windows/com/Automation.h"
#include "platform/windows/com/DispatchSink.h"
#include "platform/windows/system/ProcessWatch.h"

namespace velkor {
namespace {

// Result codes of a refresh that its process did not report itself.
constexpr short NothingToReport = 6;
constexpr short FetchingFailed = 7;

constexpr UINT Reported = WM_APP;
constexpr DISPID WriteCompleteEvent = 1;
constexpr const char* Source = "VelkorCacheUtility";

struct Report {
  short synchResult;
  long synchError;
};

/// Takes the events of one utility for as long as somebody hears it.
class EventSink : public DispatchSink {
 public:
  explicit EventSink(std::function<void(const Report&)> hear)
      : DispatchSink(DIID__IVelkorCacheUtilityEvents), hear_(std::move(hear)) {}
  void Detach() { hear_ = nullptr; }

  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) override {
    if (member != WriteCompleteEvent) return DISP_E_MEMBERNOTFOUND;
    if (parameters == nullptr || parameters->cArgs != 2) return DISP_E_BADPARAMCOUNT;
    // The last argument comes first.
    VARIANT error;
    VARIANT result;
    ::VariantInit(&error);
    ::VariantInit(&result);
    if (FAILED(::VariantChangeType(&error, &parameters->rgvarg[0], 0, VT_I4)) ||
        FAILED(::VariantChangeType(&result, &parameters->rgvarg[1], 0, VT_I2))) {
      return DISP_E_TYPEMISMATCH;
    }
    if (hear_) hear_({result.iVal, error.lVal});
    return S_OK;
  }

 private:
  std::function<void(const Report&)> hear_;
};

/// A utility's process, from its activation on. Its end tells the utility to end as well.
class UtilityProcess {
 public:
  /// Throws Error. `hear` and `onEnd` may come from within any call into the process.
  UtilityProcess(AutomationProgram& program, AutomationClass& kind,
                 std::function<void(const Report&)> hear, std::function<void()> onEnd)
      : program_(program),
        utility_(std::in_place, program, kind, program.Create(CacheUtilityProgram)),
        sink_(new EventSink(std::move(hear))) {
    CheckVersion();
    const std::int32_t id = utility_->Get("ProcessId").ToInt();
    watch_.emplace(static_cast<DWORD>(id), std::move(onEnd));
    utility_->Put("ClientProcess", Variant(static_cast<std::int32_t>(::GetCurrentProcessId())));
    Advise();
  }
  ~UtilityProcess() {
    sink_->Detach();
    const Patience patience(watch_->Id());
    try {
      utility_->Call("Stop");
      program_.Attempt([&] { return point_->Unadvise(cookie_); });
    } catch (const std::exception&) {
      // It is gone already, or ends with its last reference.
    }
    point_.Reset();
    utility_.reset();
  }
  UtilityProcess(const UtilityProcess&) = delete;
  UtilityProcess& operator=(const UtilityProcess&) = delete;

  void Start(const RefreshInputs& inputs) {
    const Patience patience(watch_->Id());
    utility_->Put("ViewYear", Variant(std::int32_t{inputs.viewYear}));
    utility_->Put("FirstMonth", Variant(std::int32_t{inputs.firstMonth}));
    utility_->Put("CacheFile", Variant(inputs.cacheFile));
    utility_->Put("WorkFile", Variant(inputs.workFile));
    utility_->Put("FolderID", Variant(inputs.folderId));
    utility_->Put("StoreID", Variant(inputs.storeId));
    utility_->Call("Start");
  }
  /// A process that is gone needs no stop: its end is told.
  void Stop() {
    const Patience patience(watch_->Id());
    try {
      utility_->Call("Stop");
    } catch (const Error& error) {
      if (!IsDisconnected(error.Number())) throw;
    }
  }
  bool HasEnded() const { return watch_->HasEnded(); }

 private:
  void CheckVersion() {
    std::int32_t version = 0;
    try {
      version = utility_->Get("InterfaceVersion").ToInt();
    } catch (const Error& error) {
      if (error.Number() != DISP_E_UNKNOWNNAME && error.Number() != DISP_E_MEMBERNOTFOUND) throw;
    }
    if (version == CacheUtilityInterface) return;
    throw Error(errors::InvalidProcedureCall,
                "The cache utility is of another version (interface " + std::to_string(version) +
                    ", not " + std::to_string(CacheUtilityInterface) +
                    "); install the one that belongs to this control",
                Source);
  }
  void Advise() {
    const HRESULT result = program_.Attempt([&] {
      ComPtr<IConnectionPointContainer> container;
      HRESULT done = utility_->Get()->QueryInterface(IID_PPV_ARGS(&container));
      if (FAILED(done)) return done;
      done = container->FindConnectionPoint(DIID__IVelkorCacheUtilityEvents, &point_);
      return FAILED(done) ? done : point_->Advise(sink_.Get(), &cookie_);
    });
    if (FAILED(result)) program_.Fail(result, "its events", {}, Source);
  }

  AutomationProgram& program_;
  std::optional<AutomationObject> utility_;
  ComPtr<EventSink> sink_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  std::optional<ProcessWatch> watch_;
};

/// What goes on between a client and its utility; whoever calls it keeps it meanwhile, as calls
/// into the process let in messages that may end the client's object.
class Session : public std::enable_shared_from_this<Session> {
 public:
  Session(DialogOwner& owner, WriteComplete writeComplete, ComCacheUtilities::ErrorHandler onError)
      : program_("The cache utility", owner),
        kind_(Source),
        writeComplete_(std::move(writeComplete)),
        onError_(std::move(onError)),
        window_([this](UINT, WPARAM) { Deliver(); }) {}

  /// Starts the process. Throws Error.
  void Activate() {
    InCall([&] { Spawn(); });
  }

  void Start(const RefreshInputs& inputs) {
    if (running_) {
      throw Error(errors::InvalidProcedureCall, "The cache utility has not completed yet.", Source);
    }
    running_ = true;
    stopping_ = false;
    try {
      InCall([&] {
        if (!process_ || process_->HasEnded()) Spawn();
        // A copy: its end may be told in the middle of the call.
        const std::shared_ptr<UtilityProcess> process = process_;
        if (process) process->Start(inputs);
        if (process && stopping_) process->Stop();
      });
    } catch (...) {
      running_ = false;
      report_.reset();
      process_.reset();
      throw;
    }
  }

  void Stop() {
    if (!running_ || stopping_) return;
    stopping_ = true;
    // A start that is under way sees to it.
    if (calls_ > 0) return;
    InCall([&] {
      if (const std::shared_ptr<UtilityProcess> process = process_) process->Stop();
    });
  }

  void Abandon() {
    abandoned_ = true;
    running_ = false;
    report_.reset();
    process_.reset();
  }

 private:
  /// Nothing is delivered from within a call.
  template <typename Call>
  void InCall(const Call& call) {
    struct Scope {
      explicit Scope(Session& session) : session_(session) { ++session_.calls_; }
      ~Scope() {
        if (--session_.calls_ == 0 && session_.report_) session_.DeliverSoon();
      }
      Session& session_;
    };
    const Scope scope(*this);
    call();
  }

  void Spawn() {
    process_.reset();
    auto process = std::make_shared<UtilityProcess>(
        program_, kind_, [this](const Report& report) { Take(report); }, [this] { End(); });
    if (!abandoned_) process_ = std::move(process);
  }

  void Take(const Report& report) {
    if (!running_ || report_) return;
    report_ = report;
    DeliverSoon();
  }
  void End() {
    const auto self = shared_from_this();
    process_.reset();
    Take({stopping_ ? NothingToReport : FetchingFailed, 0});
  }

  void DeliverSoon() {
    constexpr UINT Moment = 10;
    // The queue may be full.
    if (!::PostMessageW(window_.Get(), Reported, 0, 0)) {
      ::SetTimer(window_.Get(), Reported, Moment, nullptr);
    }
  }
  void Deliver() {
    ::KillTimer(window_.Get(), Reported);
    if (!report_ || calls_ > 0) return;
    const Report report = *std::exchange(report_, std::nullopt);
    running_ = false;
    // Copies: the completion may end this.
    const WriteComplete writeComplete = writeComplete_;
    const ComCacheUtilities::ErrorHandler onError = onError_;
    try {
      writeComplete(report.synchResult, report.synchError);
    } catch (const Error& error) {
      if (onError) onError(error);
    } catch (const std::exception& error) {
      if (onError) onError(Error(errors::InvalidProcedureCall, error.what()));
    }
  }

  AutomationProgram program_;
  AutomationClass kind_;
  WriteComplete writeComplete_;
  ComCacheUtilities::ErrorHandler onError_;
  std::shared_ptr<UtilityProcess> process_;
  /// Of the running refresh, not delivered yet.
  std::optional<Report> report_;
  /// A refresh was started and has not completed.
  bool running_ = false;
  bool stopping_ = false;
  bool abandoned_ = false;
  int calls_ = 0;
  MessageWindow window_;
};

class ComCacheUtility : public CacheUtility {
 public:
  explicit ComCacheUtility(std::shared_ptr<Session> session) : session_(std::move(session)) {}
  ~ComCacheUtility() override { session_->Abandon(); }
  ComCacheUtility(const ComCacheUtility&) = delete;
  ComCacheUtility& operator=(const ComCacheUtility&) = delete;

  void Start(const RefreshInputs& inputs) override {
    const std::shared_ptr<Session> session = session_;
    session->Start(inputs);
  }
  void Stop() override {
    const std::shared_ptr<Session> session = session_;
    session->Stop();
  }

 private:
  std::shared_ptr<Session> session_;
};

}  // namespace

ComCacheUtilities::ComCacheUtilities(DialogOwner& owner, ErrorHandler onError)
    : owner_(owner), onError_(std::move(onError)) {}

std::unique_ptr<CacheUtility> ComCacheUtilities::Create(WriteComplete writeComplete) {
  auto session = std::make_shared<Session>(owner_, std::move(writeComplete), onError_);
  auto utility = std::make_unique<ComCacheUtility>(session);
  session->Activate();
  return utility;
}

}  // namespace velkor
