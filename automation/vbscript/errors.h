#pragma once

#include <string>
#include <string_view>

namespace zentrel::vbscript {

/// The language's numbers for what goes wrong while a script runs (up to 1000) and for what
/// keeps it from being compiled (from 1001).
enum class ErrorNumber : int {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    ArrayLocked = 10,
    DivisionByZero = 11,
    TypeMismatch = 13,
    UserInterrupt = 18,
    OutOfStack = 28,
    ObjectNotSet = 91,
    ForNotInitialized = 92,
    InvalidNull = 94,
    ObjectRequired = 424,
    CannotCreate = 429,
    NoSuchMember = 438,
    ActionNotSupported = 445,
    ArgumentNotOptional = 449,
    WrongArguments = 450,
    NotACollection = 451,
    KeyExists = 457,
    UnsupportedType = 458,
    VariableUndefined = 500,
    IllegalAssignment = 501,
    UnqualifiedReference = 505,
    ClassNotDefined = 506,
    RegExpExpected = 5016,
    RegExpSyntax = 5017,
    RegExpQuantifier = 5018,
    RegExpBracket = 5019,
    RegExpParenthesis = 5020,
    RegExpRange = 5021,
    ElementNotFound = 32811,

    TooComplex = 1001,
    Syntax = 1002,
    ExpectedOpen = 1005,
    ExpectedClose = 1006,
    ExpectedBracket = 1007,
    ExpectedIdentifier = 1010,
    ExpectedEquals = 1011,
    ExpectedIf = 1012,
    ExpectedTo = 1013,
    ExpectedEnd = 1014,
    ExpectedFunction = 1015,
    ExpectedSub = 1016,
    ExpectedThen = 1017,
    ExpectedWend = 1018,
    ExpectedLoop = 1019,
    ExpectedNext = 1020,
    ExpectedCase = 1021,
    ExpectedSelect = 1022,
    ExpectedExpression = 1023,
    ExpectedStatement = 1024,
    ExpectedEndOfStatement = 1025,
    ExpectedInteger = 1026,
    ExpectedWhileUntil = 1027,
    ExpectedWhileUntilEnd = 1028,
    ExpectedWith = 1029,
    IdentifierTooLong = 1030,
    InvalidNumber = 1031,
    InvalidCharacter = 1032,
    UnterminatedString = 1033,
    InvalidMe = 1037,
    LoopWithoutDo = 1038,
    InvalidExit = 1039,
    InvalidForVariable = 1040,
    NameRedefined = 1041,
    MustBeFirst = 1042,
    CannotUseParentheses = 1044,
    ExpectedLiteral = 1045,
    ExpectedIn = 1046,
    ExpectedClass = 1047,
    MustBeInsideClass = 1048,
    ExpectedLetSetGet = 1049,
    ExpectedProperty = 1050,
    InconsistentArguments = 1051,
    MultipleDefaults = 1052,
    InitializeArguments = 1053,
    PropertyNeedsArgument = 1054,
    UnexpectedNext = 1055,
    DefaultOnly = 1056,
    DefaultNeedsPublic = 1057,
    DefaultNeedsGet = 1058,
};

inline constexpr int kFirstCompileError = 1001;
inline constexpr int kLastCompileError = 1058;

/// The language's wording; "Unknown runtime error" for a number that it doesn't know.
std::string ErrorText(int number);
/// What Err.Source says for errors of the language itself.
std::string_view ErrorSource(int number);

/// Throws ScriptError with the language's wording, and the name at fault in quotes behind it.
[[noreturn]] void Raise(ErrorNumber number, std::string_view name = {});
[[noreturn]] void Raise(ErrorNumber number, std::u16string_view name);

} // namespace zentrel::vbscript
