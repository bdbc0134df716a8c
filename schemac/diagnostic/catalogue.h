#pragma once

#include "schemac/diagnostic/message.h"

#include <string_view>

/// Every message of the compiler. A number is never given to another message, not even after its own is gone.
namespace Schemac::Diagnostics {

using Name = std::string_view; ///< something that the schema names
using Text = std::string_view; ///< a piece of the sentence: what was expected, a hint, a reason

// Files
inline constexpr Message<Name, Text> kUnreadableFile{1, "cannot read '{}': {}"};
inline constexpr Message<> kInvalidUtf8{2, "the file is not valid UTF-8 from here on"};
inline constexpr Message<Name> kControlCharacter{3, "control character {} is not allowed in a schema"};
inline constexpr Message<Name> kOutsideRoot{4, "'{}' does not lie below the source root"};
inline constexpr Message<Name> kFileTwice{5, "'{}' is given twice"};

// Syntax
inline constexpr Message<> kUnterminatedText{101, "this text has no closing '\"' on its line"};
inline constexpr Message<> kBackslashInText{102, "a text cannot hold '\\'"};
inline constexpr Message<Text, Text> kExpected{103, "expected {}, found {}"};
inline constexpr Message<Text> kExpectedAfter{104, "expected {}"};
inline constexpr Message<> kDanglingDoc{105, "this documentation comment stands before no declaration"};
inline constexpr Message<> kDocBackslash{106, "a documentation line cannot end with '\\'"};
inline constexpr Message<> kTooDeep{107, "types are nested more than 64 deep"};
inline constexpr Message<> kNoNamespace{108, "a 'namespace' line must come before the first declaration"};
inline constexpr Message<Name> kClauseTwice{109, "'{}' is written twice"};
inline constexpr Message<Name, Name> kMissingWire{
    110, "type '{}' has no wire name: write 'wire {}' after it"};
inline constexpr Message<Name> kMissingSince{
    111, "type '{}' has no version: write 'since <version>' after it"};
inline constexpr Message<> kMixedSeparators{112, "'.' and '::' cannot be mixed in one name"};
inline constexpr Message<Name> kCannotBeOpen{113, "only a data type or a fault can be open, not {}"};

// Names
inline constexpr Message<Name, Text> kUnknownType{201, "no type is named '{}'{}"};
inline constexpr Message<Name, Text> kUnknownVersion{202, "no version is named '{}'{}"};
inline constexpr Message<Name> kDuplicateType{203, "type '{}' is declared twice"};
inline constexpr Message<Name> kDuplicateVersion{204, "version '{}' is declared twice"};
inline constexpr Message<Name> kDuplicateWire{205, "wire name '{}' is taken"};
inline constexpr Message<Text, Name> kDuplicateMember{206, "{} '{}' is declared twice"};
inline constexpr Message<Name, Name> kRepeatsInherited{207, "property '{}' is inherited from '{}' already"};
inline constexpr Message<Name> kDuplicateInclude{208, "version '{}' is included twice"};
inline constexpr Message<Name> kDuplicateFault{209, "fault '{}' is listed twice"};

// Types and versions
inline constexpr Message<Text, Text, Name, Text> kWrongBase{301, "the base of {} must be {}, and '{}' is {}"};
inline constexpr Message<Name> kFaultWithoutBase{302, "fault '{}' must name its base"};
inline constexpr Message<Text> kInheritanceCycle{303, "types derive from each other: {}"};
inline constexpr Message<Text> kIncludeCycle{304, "versions include each other: {}"};
inline constexpr Message<Name, Text> kNotAFault{305, "'throws' takes faults, and '{}' is {}"};
inline constexpr Message<Name> kOpenTypeMember{306, "open type '{}' cannot declare properties"};
inline constexpr Message<Name> kEmptyEnum{307, "enumeration '{}' has no tags"};
inline constexpr Message<Name> kSecretNotString{308, "only a string can be secret, not '{}'"};
inline constexpr Message<Text, Text> kFlags{309, "{} cannot be {}"};
inline constexpr Message<Text, Name, Name, Name> kOlderThanOwner{
    310, "{} '{}' is of version '{}', which does not include its owner's version '{}'"};
inline constexpr Message<Text, Name, Name, Name, Name> kYoungerType{
    311, "{} '{}' is of version '{}', which does not include version '{}' of its type '{}'"};
inline constexpr Message<Name> kResultSinceWithoutResult{
    312, "method '{}' has no result to give a version to"};
inline constexpr Message<Name> kMissingDoc{
    313, "type '{}' needs a line of documentation ('/// ...') before it"};
inline constexpr Message<> kArrayOfBoolean{314, "there are no arrays of boolean"};
inline constexpr Message<Name, Text> kNotAnOwnEnum{
    315, "'order enum' takes enumerations of this library, and '{}' is {}"};
inline constexpr Message<Name> kOrderedTwice{316, "enumeration '{}' has a place in the order already"};
inline constexpr Message<Name> kNotOrdered{317, "enumeration '{}' has no place in the order"};
inline constexpr Message<> kSecondOrder{318, "the order of the enumerations is given twice"};
inline constexpr Message<Name> kManagedNested{319, "managed type '{}' cannot stand inside another type"};
inline constexpr Message<Name, Name> kReplacedProperty{
    320, "property '{}' takes the place of that of '{}' and must be of its type or one derived from it"};
inline constexpr Message<Name> kNotAnErrorStatus{321, "{} is no HTTP status of an error"};

// Names in generated code
inline constexpr Message<Text, Name> kNotUpperCase{401, "{} name '{}' must begin with an upper-case letter"};
inline constexpr Message<Text, Name> kNotLowerCase{402, "{} name '{}' must begin with a lower-case letter"};
inline constexpr Message<Text, Name> kUnderscore{403, "{} name '{}' must not begin with an underscore"};
inline constexpr Message<Text, Name> kBuiltinName{404, "{} name '{}' is the name of a built-in type"};
inline constexpr Message<Text, Name, Name, Text, Name> kMemberClash{
    405, "{} '{}' needs the C++ member '{}', which {} '{}' has already"};
inline constexpr Message<Name> kNestedLikeEncloser{
    406, "nested type '{}' has the name of the type around it"};
inline constexpr Message<Name> kTypeIsNamespace{407, "'{}' would be both a class and a namespace in C++"};
inline constexpr Message<Text, Name, Name> kConstantClash{
    408, "{} '{}' needs the C++ constant '{}', which is taken"};
inline constexpr Message<Name, Name> kGlobalClash{409, "type '{}' needs the C++ object '{}', which is taken"};
inline constexpr Message<Name> kReservedInFault{410, "'{}' is the name of a generated member of a fault"};
inline constexpr Message<Name, Name> kHeaderClash{411, "type '{}' needs the header '{}', which is taken"};
inline constexpr Message<Text> kHeaderCycle{412, "the headers of these types would include each other: {}"};
inline constexpr Message<Name, Name> kBaseInside{
    413, "type '{}' cannot derive from '{}', which lies inside it"};
inline constexpr Message<Name> kNestedLikeFunction{
    414, "nested type '{}' has the name of a function that every class inherits"};
inline constexpr Message<Name, Name> kParameterClash{
    415, "parameter '{}' needs the C++ name '{}', which is taken"};
inline constexpr Message<Name, Name> kStubClash{416, "type '{}' has the name of the stub of '{}'"};

// Notes
inline constexpr Message<> kFirstDeclaredHere{0, "first declared here"};
inline constexpr Message<Name> kDeclaredHere{0, "'{}' is declared here"};
inline constexpr Message<> kFirstWrittenHere{0, "first written here"};
inline constexpr Message<> kOpenedHere{0, "opened here"};
inline constexpr Message<> kOrderedHere{0, "the order is given here"};

} // namespace Schemac::Diagnostics
