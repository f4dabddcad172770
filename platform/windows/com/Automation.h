// platform/windows/com/Automation.h: calls by name on the objects of another program.
#pragma once

#include <chrono>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/windows/com/Variant.h"
#include "platform/windows/system/DialogOwner.h"
#include "values/Error.h"

namespace velkor {

/// Whether an Error's number says that the program behind an object is gone.
bool IsDisconnected(long number);

/// A program that is called. Every outgoing call lets this thread's messages through, so it counts
/// as busy; one that the program rejects or puts off is made again for a bounded time. On the
/// thread that initialised COM; outlives its objects.
class AutomationProgram {
 public:
  /// @param name      names the program in error texts
  /// @param owner     outlives this
  /// @param patience  how long rejected calls are made again
  AutomationProgram(std::string name, DialogOwner& owner,
                    std::chrono::milliseconds patience = std::chrono::seconds(5))
      : name_(std::move(name)), owner_(owner), patience_(patience) {}
  AutomationProgram(const AutomationProgram&) = delete;
  AutomationProgram& operator=(const AutomationProgram&) = delete;

  const std::string& Name() const { return name_; }
  DialogOwner& Owner() const { return owner_; }
  /// Messages may be coming in from the middle of a call.
  bool IsInCall() const { return depth_ > 0; }

  /// A new object by its program identifier. Throws Error with a text for the user.
  ComPtr<IDispatch> Create(std::string_view programId,
                           DWORD context = CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER);
  /// The object of a running program that shows it to others; null where there is none.
  ComPtr<IDispatch> Join(std::string_view programId);

  /// Whether a program shows itself to others under this identifier; calls no program.
  bool IsListed(std::string_view programId) const;
  /// How many calls found the program gone.
  int Losses() const { return losses_; }

  /// Makes an outgoing call, again while it is rejected, and answers as it did.
  HRESULT Attempt(const std::function<HRESULT()>& call);
  /// The same once: one that the program rejects shows at least that it is there.
  HRESULT AttemptOnce(const std::function<HRESULT()>& call);
  /// Lets go of an object, which is an outgoing call too.
  void LetGo(ComPtr<IUnknown> object);
  /// Throws Error: number `result`, "program: what: text" with the system's text for an empty one.
  [[noreturn]] void Fail(HRESULT result, std::string_view what, std::string_view text,
                         std::string_view source) const;

  /// The outermost call is over.
  std::function<void()> onIdle;

 private:
  std::string Explain(HRESULT result) const;

  std::string name_;
  DialogOwner& owner_;
  std::chrono::milliseconds patience_;
  int depth_ = 0;
  int losses_ = 0;
};

/// Makes an object of its program identifier; throws Error when there is none.
using OpenObject = std::function<ComPtr<IDispatch>(AutomationProgram&, std::string_view programId)>;

/// The running program's object, else a new one.
ComPtr<IDispatch> JoinOrCreate(AutomationProgram& program, std::string_view programId);

/// The member identifiers of one class of objects, each looked up once. Outlives the objects.
class AutomationClass {
 public:
  explicit AutomationClass(std::string name) : name_(std::move(name)) {}

  const std::string& Name() const { return name_; }
  /// Of a program that was started anew nothing is known.
  void Forget() { members_.clear(); }

 private:
  friend class AutomationObject;

  std::string name_;
  std::map<std::string, DISPID, std::less<>> members_;
};

/// An object of another program, or none; copies are the same object. A call may let its holder go.
///
/// Failures throw Error: the program's own number and text, with the class and the member that
/// failed in front ("Outlook: Items.Restrict: ..."); the source is the class.
class AutomationObject {
 public:
  using Arguments = std::initializer_list<Variant>;

  AutomationObject(AutomationProgram& program, AutomationClass& kind, ComPtr<IDispatch> object)
      : program_(&program), kind_(&kind), object_(std::move(object)) {}

  ~AutomationObject() {
    if (object_ != nullptr) program_->LetGo(std::move(object_));
  }
  AutomationObject(const AutomationObject&) = default;
  AutomationObject(AutomationObject&&) = default;
  AutomationObject& operator=(AutomationObject other) noexcept;

  explicit operator bool() const { return object_ != nullptr; }
  IDispatch* Get() const { return object_.Get(); }

  /// A property, or the result of a method that may be either.
  Variant Get(std::string_view member, Arguments arguments = {}) const;
  Variant Call(std::string_view member, Arguments arguments = {}) const;
  void Put(std::string_view member, const Variant& value) const;
  std::string GetText(std::string_view member) const {
    return Converted(member, Get(member), &Variant::ToText);
  }
  std::int32_t GetInt(std::string_view member) const {
    return Converted(member, Get(member), &Variant::ToInt);
  }
  /// What a member answered, as another type.
  template <typename Result>
  Result Converted(std::string_view member, const Variant& value,
                   Result (Variant::*conversion)() const) const {
    try {
      return (value.*conversion)();
    } catch (const Error&) {
      Fail(DISP_E_TYPEMISMATCH, member);
    }
  }
  /// By reference, or by value where the object takes none.
  void PutReference(std::string_view member, IDispatch* value) const;

 private:
  [[noreturn]] void Fail(HRESULT result, std::string_view member, std::string_view text = {}) const;
  DISPID Identify(std::string_view member) const;
  DISPID LookUp(std::string_view member) const;
  Variant Invoke(std::string_view member, WORD flags, std::vector<VARIANT> arguments) const;

  AutomationProgram* program_;
  AutomationClass* kind_;
  ComPtr<IDispatch> object_;
};

}  // namespace velkor
