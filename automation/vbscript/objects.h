#pragma once

#include "automation/vbscript/arrays.h"
#include "automation/vbscript/code.h"

#include <memory>

namespace zentrel::vbscript {

class Runtime;

/// What an engine must reach when it closes: objects that may hold each other in a circle.
class Tracked {
  public:
    Tracked() = default;
    Tracked(const Tracked&) = delete;
    Tracked& operator=(const Tracked&) = delete;
    /// Enters the engine's list.
    void Track(Tracked*& head);
    void Untrack();
    /// The engine closes: let go of everything held.
    virtual void LetGo() = 0;
    virtual Object* Self() = 0;

  protected:
    ~Tracked() { Untrack(); }

  private:
    Tracked** head_ = nullptr;
    Tracked* next_ = nullptr;
    Tracked* previous_ = nullptr;
};

/// An object of a script's class.
class Instance : public Object, public Tracked {
  public:
    Instance(Runtime& runtime, const ClassInfo& info);
    ~Instance() override;

    const ClassInfo& info() const { return *info_; }
    Value* Fields() { return fields_.get(); }
    /// False once the engine is gone: its code can't run any more.
    bool Alive() const { return runtime_ != nullptr; }
    Runtime& runtime() { return *runtime_; }
    /// Runs Class_Terminate unless it has run.
    void Terminate() noexcept;
    void LetGo() override;
    Object* Self() override { return this; }

  protected:
    void BeforeEnd() override { Terminate(); }

  private:
    Runtime* runtime_;
    const ClassInfo* info_;
    std::unique_ptr<Value[]> fields_;
    std::size_t charged_ = 0;
    bool terminated_ = false;
};

/// What GetRef gives.
class ProcedureReference : public Object, public Tracked {
  public:
    ProcedureReference(Runtime& runtime, const Procedure& procedure);
    Value Call(std::span<Value> args);
    void LetGo() override { procedure_ = nullptr; }
    Object* Self() override { return this; }

  private:
    Runtime& runtime_;
    const Procedure* procedure_;
};

/// A For Each on its way.
class Iteration : public Object {
  public:
    /// Error 451 for what can't be walked.
    explicit Iteration(const Value& collection);
    /// False at the end.
    bool Next(Value& item);

  private:
    Handle<ArrayData> array_;
    std::size_t at_ = 0;
    Handle<Object> object_;
    std::unique_ptr<Enumerator> enumerator_;
};

/// `base(args)`: an element or what the default member gives.
Value IndexValue(const Value& base, std::span<Value> args);
/// `base(args) = value`.
void SetIndexValue(Value& base, std::span<Value> args, const Value& value, bool set);
/// The indices of an element; 13 for what is no number.
std::vector<std::int64_t> Indices(std::span<const Value> args);

/// TypeName of an object.
std::string ObjectTypeName(const Object* object);

} // namespace zentrel::vbscript
