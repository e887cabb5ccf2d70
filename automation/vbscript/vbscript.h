#pragma once

#include "automation/vbscript/value.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// An interpreter of VBScript, version 5.8 in behaviour. It does no input or output: what a script
/// reaches beyond the language are the objects and callbacks that the host hands in.
///
/// Texts at this boundary are UTF-8; inside, strings are UTF-16 units as the language counts them.
namespace zentrel::vbscript {

/// What went wrong and where.
struct ErrorInfo {
    int number = 0;           ///< The language's own number; 1001 and up come from compiling.
    std::string source;       ///< "Microsoft VBScript runtime error" or what Err.Raise gave.
    std::string description;  ///< The language's own wording, or what Err.Raise gave.
    std::string module;       ///< Name of the module whose text failed.
    std::string procedure;    ///< Innermost procedure; empty for code outside of any.
    std::string line_text;    ///< The source line, without its line break.
    int line = 0;             ///< Counts from 1; 0 when no script text is to blame.
    int column = 0;           ///< Counts from 1, in UTF-16 units.
    bool interrupted = false; ///< The interrupt callback stopped the script.
};

/// Every failure of a script, in compiling and in running. Hosts throw it too, to answer a member
/// access with an error that scripts can handle.
class ScriptError : public std::runtime_error {
  public:
    explicit ScriptError(ErrorInfo info)
        : std::runtime_error(info.description), info(std::move(info)) {}
    /// With the language's wording for `number`; `detail` is the name it may carry in quotes.
    explicit ScriptError(int number, std::string_view detail = {});

    ErrorInfo info;
};

/// The arguments of a call on a host object. A script's variable arrives by reference: assigning
/// to `args[i]` changes it.
class Arguments {
  public:
    Arguments() = default;
    explicit Arguments(std::span<Value> values) : values_(values) {}
    std::size_t size() const { return values_.size(); }
    bool empty() const { return values_.empty(); }
    Value& operator[](std::size_t index) const { return values_[index].Target(); }
    /// True for an argument that was given, not left out.
    bool Has(std::size_t index) const {
        return index < values_.size() && !values_[index].Target().IsMissing();
    }
    Arguments From(std::size_t index) const { return Arguments(values_.subspan(index)); }

  private:
    std::span<Value> values_;
};

/// A member of a host object as a call site remembers it.
struct Member {
    int slot = -1;
    /// False: arguments in parentheses go to the default member of what the member gives
    /// (`Part.PrgmBits("X")` with a plain property `PrgmBits`). True: the member takes them.
    bool takes_arguments = false;
};

/// Walks what For Each walks.
class Enumerator {
  public:
    virtual ~Enumerator() = default;
    /// The next item, or nothing at the end.
    virtual std::optional<Value> Next() = 0;
};

/// An object that scripts see. Member names are turned into slots once per call site: a site
/// remembers the answer of FindMember together with MemberTable, and asks again only when it meets
/// an object with another table.
class HostObject : public Object {
  public:
    HostObject() : Object(Kind::Host) {}

    /// What TypeName reports.
    virtual std::string_view ClassName() const = 0;
    /// Identity of the member table: equal for objects whose FindMember answers alike. Null
    /// means that answers differ from object to object and mustn't be remembered.
    virtual const void* MemberTable() const = 0;
    /// Regardless of case; nothing when there is no such member (error 438).
    virtual std::optional<Member> FindMember(std::u16string_view name) const = 0;
    /// The member that stands for the object in an expression or takes its parentheses.
    virtual std::optional<Member> DefaultMember() const { return std::nullopt; }

    /// Reads a property or calls a function for its value.
    virtual Value Get(int slot, Arguments args) = 0;
    /// `object.member(args) = value`; the default refuses with error 438.
    virtual void Set(int slot, Arguments args, const Value& value);
    /// `Set object.member(args) = value`; the default refuses with error 438.
    virtual void SetRef(int slot, Arguments args, const Value& value);
    /// The member as a statement; its value is dropped. The default reads it.
    virtual void Call(int slot, Arguments args) { Get(slot, args); }
    /// `object Is other`: whether both stand for one thing.
    virtual bool IsSame(const HostObject& other) const { return this == &other; }
    /// For Each; the default refuses with error 438 (a For Each over it fails with 451).
    virtual std::unique_ptr<Enumerator> Enumerate();
};

/// What the interpreter asks of its host. Every one may be left empty.
struct Callbacks {
    /// MsgBox: prompt, buttons and title; gives the number of the button. Without it MsgBox
    /// gives 1 (OK).
    std::function<int(std::string_view prompt, int buttons, std::string_view title)> message_box;
    /// InputBox: prompt, title and proposal; nothing means that it was cancelled.
    std::function<std::optional<std::string>(std::string_view prompt, std::string_view title,
                                             std::string_view proposal)>
        input_box;
    /// Asked every few thousand jumps and calls; true stops the script, past its own handlers.
    std::function<bool()> interrupt;
    /// Local time as a Date's serial number (days since 30 December 1899).
    std::function<double()> now;
};

class Runtime;

/// A named body of code with a global namespace of its own. Named objects are visible in each;
/// procedures of other modules are not, but for those of the global module.
class Module {
  public:
    virtual ~Module() = default;

    virtual const std::string& Name() const = 0;
    /// Compiles text into the module and runs what stands outside of procedures. A later
    /// procedure of the same name replaces an earlier one.
    virtual void AddCode(std::string_view text) = 0;
    /// True for a Sub or Function that AddCode or ExecuteGlobal has defined.
    virtual bool HasProcedure(std::string_view name) const = 0;
    /// Runs a procedure; a Sub gives Empty. Error 13 when there is none of that name, 450 when
    /// the count of arguments is wrong. Arguments may be changed by the procedure.
    virtual Value Run(std::string_view procedure, std::span<Value> args = {}) = 0;
    /// The value of one expression in the module's namespace.
    virtual Value Eval(std::string_view expression) = 0;
};

/// One engine: modules, named objects, and the error that last came out of them.
/// Everything throws ScriptError; an engine stays usable after it.
class Engine {
  public:
    explicit Engine(Callbacks callbacks = {});
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Drops all modules, code and named objects. Objects in reference cycles end here.
    /// Refused (error 5) while a script of this engine runs.
    void Reset();
    /// Makes an object visible to all modules under a global name; error 457 if the name is taken.
    void AddObject(std::string_view name, const Handle<HostObject>& object);
    /// Error 457 if there is a module of that name; names don't regard case.
    Module& AddModule(std::string_view name);
    Module* FindModule(std::string_view name) const;
    /// Modules that AddModule made, in order.
    std::vector<Module*> Modules() const;
    /// The module whose procedures all modules see. It is always there.
    Module& GlobalModule() const;
    /// The last failure; number 0 when there was none since Reset.
    const ErrorInfo& LastError() const;
    bool Running() const;

  private:
    std::unique_ptr<Runtime> runtime_;
};

/// Bytes that the scripts' strings, arrays and objects may hold together (error 7 beyond it).
/// 1 GiB at start.
void SetMemoryLimit(std::size_t bytes);

} // namespace zentrel::vbscript
