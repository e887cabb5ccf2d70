#pragma once

#include "automation/vbscript/ast.h"
#include "automation/vbscript/builtins.h"
#include "automation/vbscript/names.h"
#include "automation/vbscript/vbscript.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// Compiled code: register instructions over banks of values.
namespace zentrel::vbscript {

class ScriptModule;
struct ClassInfo;
struct ClassMember;

/// Where a value lies: a bank in the upper 8 bits, a place in it below.
using Operand = std::uint32_t;

enum Bank : std::uint32_t {
    kFrameBank = 0,    ///< parameters, locals and temporaries of the running procedure
    kConstantBank = 1, ///< literals of the running procedure
    kFieldBank = 2,    ///< fields of Me
    kGlobalBank = 3,   ///< first page of the module's globals; the rest follow
};
inline constexpr std::uint32_t kBankCount = 256;
inline constexpr std::uint32_t kPlaceBits = 24;
inline constexpr std::uint32_t kMaxPlace = (1U << kPlaceBits) - 1;
inline constexpr Operand kNowhere = ~Operand{0};

constexpr Operand MakeOperand(std::uint32_t bank, std::uint32_t place) {
    return bank << kPlaceBits | place;
}

/// a, b and c are operands unless told otherwise; "site" is an index into Procedure::sites.
enum class Op : std::uint8_t {
    // moves
    Let,     ///< a = value of b; objects give their default
    LetRef,  ///< the same where a may be a reference
    SetVar,  ///< Set a = b; 424 if b is no object
    Copy,    ///< temporary a = b as it is
    TakeRef, ///< temporary a = reference to variable b
    Clear,   ///< a becomes Empty
    Unset,   ///< a becomes Unset
    // arithmetic: a = b op c
    Add,
    Subtract,
    Multiply,
    Divide,
    IntDivide,
    Mod,
    Power,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Is,
    Not,
    Negate,
    Plus,
    Concat,     ///< a = b & c
    ConcatMany, ///< a = the c temporaries from b on, joined
    // jumps: a is the target
    Jump,
    JumpBack,    ///< polls
    JumpIfFalse, ///< on b
    JumpIfTrue,
    JumpUnlessEqual,
    JumpUnlessNotEqual,
    JumpUnlessLess,
    JumpUnlessGreater,
    JumpUnlessLessEqual,
    JumpUnlessGreaterEqual, ///< on b against c
    JumpIfCase,             ///< when subject b equals c
    // loops: hidden locals from c on
    ForInit,  ///< variable a = b; limit and step lie at c and c + 1
    ForTest,  ///< to a when variable b is past the limit
    ForNext,  ///< steps variable b; back to a while within the limit
    EachInit, ///< hidden a = iteration over b
    EachNext, ///< variable b = next item of hidden c, then to a
    // names, elements, members
    ReadName,     ///< a = what the name at site c means now
    BindName,     ///< makes sure that the name at site c is a variable
    Index,        ///< a = b(c)
    IndexMany,    ///< a = b(args of site c)
    IndexRef,     ///< temporary a = reference to element b(args of site c), or its value
    SetIndex,     ///< b(c) = a
    SetIndexMany, ///< b(args of site c) = a
    Call,         ///< a = name of site c (args)
    CallBuiltin,  ///< the same where the name is very likely a built-in
    Invoke,       ///< a = b.member of site c (args)
    SetMember,    ///< b.member of site c (args) = value, which lies behind the args
    Me,           ///< a = Me
    New,          ///< a = New class of site c
    // statements
    DimArray,  ///< a = new array of shape c
    ReDim,     ///< a gets the bounds at site c
    Erase,     ///< a
    WithBegin, ///< hidden a = object b
    OnErrorResume,
    OnErrorGoto0,
    Return,
    Fail, ///< raises error a, about the name c
};

/// Flags of an instruction.
enum : std::uint8_t {
    kFreeA = 1, ///< a is a temporary value that ends here
    kFreeB = 2, ///< b likewise
    kFreeC = 4,
    kSet = 8,      ///< Set instead of Let; in Invoke and Call: the value is dropped (a statement)
    kThrough = 16, ///< a may be a reference: write what it refers to
    kResolve = 16, ///< Index, Call, Invoke: an object in the result gives its default
    kSelf = 32,    ///< Invoke and SetMember: on Me
    kHardLeft = 64,
    kHardRight = 128,
    kPreserve = 64, ///< ReDim
    kWantRef = 64,  ///< ReadName, Index: a variable comes as reference
};

struct Instruction {
    Op op;
    std::uint8_t flags;
    std::uint32_t a;
    std::uint32_t b;
    std::uint32_t c;
};

/// A place in the code that names something; remembers what it found.
struct Site {
    NameId name = kNoName;
    std::uint32_t first = 0; ///< frame place of the first argument
    std::uint32_t count = 0;
    Operand local = kNowhere;  ///< the name's own place in a procedure, for names nobody declared
    Operand global = kNowhere; ///< the name's place in the module
    const Builtin* builtin = nullptr;
    const void* table = nullptr; ///< what the cached member belongs to
    Member member;               ///< of a host object
    const ClassMember* class_member = nullptr;
    HostObject* object = nullptr; ///< the named object that the name stands for
};

/// A statement's beginning in the code.
struct Mark {
    std::uint32_t start = 0;  ///< first instruction
    std::uint32_t resume = 0; ///< where On Error Resume Next goes on; 0: at the next mark
    Position at;
};

/// The text that code came from, for messages.
struct SourceText {
    std::u16string text;
    std::string Line(int number) const;
};

/// A variable of a procedure by name, for Execute and Eval.
struct LocalName {
    NameId name;
    Operand place;
    bool declared;
};

struct Procedure {
    NameId name = kNoName;
    ProcedureKind kind = ProcedureKind::Sub;
    bool is_private = false;
    bool is_text = false; ///< code outside of procedures
    bool borrows = false; ///< Execute or Eval inside a procedure: its locals are its caller's
    bool option_explicit = false;
    ScriptModule* module = nullptr;
    const ClassInfo* owner = nullptr;
    std::vector<std::uint8_t> by_value; ///< per parameter
    std::uint32_t parameter_count = 0;
    std::uint32_t result = 0;      ///< frame place of the result
    std::uint32_t local_count = 0; ///< places in front of the temporaries
    std::uint32_t frame_size = 0;
    std::vector<Instruction> code;
    std::vector<Value> constants;
    std::vector<Site> sites;
    std::vector<Declarator> shapes;
    std::vector<Mark> marks;
    std::vector<LocalName> locals;
    std::vector<Operand> unknown; ///< places of names that nobody has declared
    std::vector<ConstantDeclaration> local_constants;
    std::vector<LocalName> borrowed; ///< own place and name of what Execute takes from its caller
    std::vector<NameId> declares;    ///< variables that Execute adds to its caller
    std::shared_ptr<const SourceText> source;
};

struct ClassMember {
    NameId name = kNoName;
    bool is_field = false;
    bool is_private = false; ///< of a field
    std::uint32_t field = 0;
    const Procedure* get = nullptr; ///< also a Sub or Function
    const Procedure* let = nullptr;
    const Procedure* set = nullptr;
};

struct ClassInfo {
    NameId name = kNoName;
    std::string spelling;
    ScriptModule* module = nullptr;
    std::unordered_map<NameId, ClassMember> members;
    std::vector<std::unique_ptr<Procedure>> procedures;
    std::vector<Declarator> fields;
    const ClassMember* default_member = nullptr;
    const Procedure* initialize = nullptr;
    const Procedure* terminate = nullptr;
};

} // namespace zentrel::vbscript
