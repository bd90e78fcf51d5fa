#include "agent/constraint/grammar.h"

#include <tao/pegtl.hpp>

#include "agent/constraint/builder.h"

namespace zk::agent::etcl {

namespace {

namespace peg = tao::pegtl;

// How the rules are put together.

template <auto DO, auto... WITH>
struct Call {
  template <typename Read>
  static void apply(const Read& read, Builder& builder) {
    if constexpr (std::is_invocable_v<decltype(DO), Builder&, std::string_view,
                                      decltype(WITH)...>) {
      (builder.*DO)(read.string_view(), WITH...);
    } else {
      (builder.*DO)(WITH...);
    }
  }
};

// Reads Rule, then has the builder do something with what was read.
template <typename Rule, auto DO, auto... WITH>
struct Then : peg::if_apply<Rule, Call<DO, WITH...>> {};

std::string wrongToken(std::string_view rest);

// Refuses the constraint, for what stands here if that is nothing that a
// constraint is made of, else for what was expected instead.
template <const char* EXPECTED>
struct Refuse {
  template <typename Read>
  static void apply(const Read& read, const Builder& builder) {
    const auto& input = read.input();
    const std::string wrong = wrongToken({input.current(), input.size()});
    throw InvalidConstraintText(wrong.empty() ? EXPECTED : wrong,
                                builder.offsetOf(input.current()));
  }
};

template <typename Rule, const char* EXPECTED>
struct Must : peg::sor<Rule, peg::apply<Refuse<EXPECTED>>> {};

constexpr char VALUE[] = "a value is missing";
constexpr char SIGNED_NUMBER[] = "a sign stands before a number only";
constexpr char SOUGHT[] = "a name or a path follows 'exist'";
constexpr char UNION[] = "a path follows 'default'";
constexpr char LIST[] = "a name or a path follows 'in'";
constexpr char STEP[] = "a whole number or a member's name is missing";
constexpr char INDEX[] = "a whole number is missing";
constexpr char PAIR_NAME[] = "a name is missing between the parentheses";
constexpr char BRACKET[] = "a closing bracket is missing";
constexpr char PARENTHESIS[] = "a closing parenthesis is missing";
constexpr char OPERATOR[] = "a constraint ends here or goes on with an operator";

// The language itself. A rule that has taken a token never gives it back: each
// token is counted once, and what does not fit is wrong where it stands.
namespace rule {

struct Spaces : peg::star<peg::one<' ', '\t', '\n', '\r'>> {};
struct TokenEnd : Then<Spaces, &Builder::countToken> {};
template <typename... Parts>
struct Token : peg::seq<Parts..., TokenEnd> {};
template <char... CHARACTERS>
struct Sign : Token<peg::string<CHARACTERS...>> {};

struct And : Token<TAO_PEGTL_KEYWORD("and")> {};
struct Or : Token<TAO_PEGTL_KEYWORD("or")> {};
struct Not : Token<TAO_PEGTL_KEYWORD("not")> {};
struct In : Token<TAO_PEGTL_KEYWORD("in")> {};
struct Exist : Token<TAO_PEGTL_KEYWORD("exist")> {};
struct Default : Token<TAO_PEGTL_KEYWORD("default")> {};
struct True : Token<TAO_PEGTL_KEYWORD("TRUE")> {};
struct False : Token<TAO_PEGTL_KEYWORD("FALSE")> {};
struct Word : peg::sor<And, Or, Not, In, Exist, Default, True, False> {};
struct WrongTruth : peg::sor<TAO_PEGTL_KEYWORD("true"), TAO_PEGTL_KEYWORD("false")> {};

// A backslash makes a name of what would be a word of the language.
struct PlainName : peg::seq<peg::not_at<peg::sor<Word, WrongTruth>>, peg::not_at<peg::one<'_'>>,
                            Then<peg::identifier, &Builder::takeName>> {};
struct EscapedName : peg::seq<peg::one<'\\'>, Then<peg::identifier, &Builder::takeName>> {};
struct Name : Token<peg::sor<PlainName, EscapedName>> {};

struct Escape : peg::seq<peg::one<'\\'>, peg::one<'\'', '\\'>> {};
struct TextBody : peg::star<peg::sor<Escape, peg::not_one<'\'', '\0'>>> {};
struct Text : Token<peg::one<'\''>, Then<TextBody, &Builder::takeText>, peg::one<'\''>> {};

struct Digits : peg::plus<peg::digit> {};
struct Fraction : peg::seq<peg::one<'.'>, Digits> {};
struct Exponent : peg::seq<peg::one<'e', 'E'>, peg::opt<peg::one<'+', '-'>>, Digits> {};
struct Real : peg::sor<peg::seq<peg::opt<Digits>, Fraction, peg::opt<Exponent>>,
                       peg::seq<Digits, Exponent>> {};
struct Whole : Then<Digits, &Builder::takeWhole> {};
struct Number : Token<peg::sor<Then<Real, &Builder::takeReal>, Whole>> {};
struct Index : Token<peg::not_at<Real>, Whole> {};

struct Dot : Sign<'.'> {};
struct Length : Token<TAO_PEGTL_KEYWORD("_length")> {};
struct Discriminator : Token<TAO_PEGTL_KEYWORD("_d")> {};
struct TypeId : Token<TAO_PEGTL_KEYWORD("_type_id")> {};
struct RepositoryId : Token<TAO_PEGTL_KEYWORD("_repos_id")> {};
struct LastStep : peg::sor<Then<Length, &Builder::special, Special::LENGTH>,
                           Then<Discriminator, &Builder::special, Special::DISCRIMINATOR>,
                           Then<TypeId, &Builder::special, Special::TYPE_ID>,
                           Then<RepositoryId, &Builder::special, Special::REPOSITORY_ID>> {};

struct Arm : peg::sor<peg::seq<Sign<'-'>, Then<Must<Index, INDEX>, &Builder::negativeArm>>,
                      peg::seq<Sign<'+'>, Then<Must<Index, INDEX>, &Builder::arm>>,
                      Then<Index, &Builder::arm>, Then<Text, &Builder::namedArm>,
                      Then<peg::success, &Builder::defaultArm>> {};
struct ArmStep : peg::seq<Sign<'('>, Arm, Must<Sign<')'>, PARENTHESIS>> {};
struct Member : Then<Name, &Builder::member> {};
struct Place : Then<Token<Whole>, &Builder::memberAt> {};  // no fraction: the next dot is a step's
struct Dotted : peg::seq<Dot, Must<peg::sor<ArmStep, Member, Place>, STEP>> {};
struct Element
    : peg::seq<Sign<'['>, Then<Must<Index, INDEX>, &Builder::element>, Must<Sign<']'>, BRACKET>> {};
struct Associated
    : peg::seq<Sign<'('>, Then<Must<peg::sor<Name, Text>, PAIR_NAME>, &Builder::associated>,
               Must<Sign<')'>, PARENTHESIS>> {};
struct Step : Then<peg::sor<Dotted, Element, Associated>, &Builder::limitSteps> {};
struct Start : Then<Name, &Builder::start> {};
struct Path : peg::seq<Sign<'$'>, peg::opt<Start>, peg::star<peg::not_at<Dot, LastStep>, Step>,
                       peg::opt<Dot, LastStep>> {};
struct Variable : peg::sor<Path, Start> {};

struct Disjunction;
struct Group : peg::seq<Then<Sign<'('>, &Builder::openGroup>, Disjunction,
                        Then<Must<Sign<')'>, PARENTHESIS>, &Builder::closeGroup>> {};
template <Operation WHAT, char SIGN>
struct Signed
    : Then<peg::seq<Sign<SIGN>, Must<Number, SIGNED_NUMBER>>, &Builder::pushSigned, WHAT> {};
struct Literal
    : peg::sor<Then<True, &Builder::pushTruth, true>, Then<False, &Builder::pushTruth, false>,
               Then<Text, &Builder::pushText>, Then<Number, &Builder::pushNumber>> {};
struct Exists : Then<peg::seq<Exist, Must<Variable, SOUGHT>>, &Builder::pushExists> {};
struct IsDefault : Then<peg::seq<Default, Must<Path, UNION>>, &Builder::pushDefault> {};
struct Factor
    : peg::sor<Then<Path, &Builder::pushPart>, Then<Name, &Builder::pushName>, Group, Literal,
               Signed<Operation::ADD, '+'>, Signed<Operation::SUBTRACT, '-'>, Exists, IsDefault> {};
struct Negation : Then<peg::seq<Not, Must<Factor, VALUE>>, &Builder::negate> {};
struct Term : Must<peg::sor<Negation, Factor>, VALUE> {};

template <Operation WHAT, char SIGN, typename Operand>
struct Calculated : Then<peg::seq<Sign<SIGN>, Operand>, &Builder::calculate, WHAT> {};
struct Product : peg::seq<Term, peg::star<peg::sor<Calculated<Operation::MULTIPLY, '*', Term>,
                                                   Calculated<Operation::DIVIDE, '/', Term>>>> {};
struct Sum : peg::seq<Product, peg::star<peg::sor<Calculated<Operation::ADD, '+', Product>,
                                                  Calculated<Operation::SUBTRACT, '-', Product>>>> {
};
struct Substring : Then<peg::seq<Sign<'~'>, Sum>, &Builder::combine, &substring> {};
struct Contained : Then<peg::seq<In, Must<Variable, LIST>>, &Builder::findInList> {};
struct Containment : peg::seq<Sum, peg::opt<Substring>, peg::opt<Contained>> {};
template <Comparison HOW, char... SIGN>
struct Compared : Then<peg::seq<Sign<SIGN...>, Containment>, &Builder::compare, HOW> {};
struct AnyComparison
    : peg::sor<Compared<Comparison::EQUAL, '=', '='>, Compared<Comparison::DIFFERENT, '!', '='>,
               Compared<Comparison::LESS_OR_EQUAL, '<', '='>,
               Compared<Comparison::GREATER_OR_EQUAL, '>', '='>, Compared<Comparison::LESS, '<'>,
               Compared<Comparison::GREATER, '>'>> {};
struct Relation : peg::seq<Containment, peg::opt<AnyComparison>> {};
struct Conjoined : Then<peg::seq<And, Relation>, &Builder::combineConditions, &conjunction> {};
struct Conjunction : peg::seq<Relation, peg::star<Conjoined>> {};
struct Disjoined : Then<peg::seq<Or, Conjunction>, &Builder::combineConditions, &disjunction> {};
struct Disjunction : peg::seq<Conjunction, peg::star<Disjoined>> {};

struct Empty : Then<peg::eof, &Builder::pushTruth, true> {};
struct Constraint
    : peg::seq<Spaces, peg::sor<Empty, peg::seq<Disjunction, Must<peg::eof, OPERATOR>>>> {};

struct AnySign : peg::sor<peg::one<'<', '>', '~', '+', '-', '*', '/', '(', ')', '[', ']', '$', '.'>,
                          peg::string<'=', '='>, peg::string<'!', '='>> {};
struct AnyToken : peg::sor<Name, Word, Text, Number, LastStep, AnySign> {};

}  // namespace rule

using Input = peg::memory_input<peg::tracking_mode::lazy, peg::eol::lf, const char*>;

Input inputOf(std::string_view text) { return {text.data(), text.data() + text.size(), ""}; }

std::string describe(char c) {
  if (c > ' ' && c < '\x7f') {
    return std::string("'") + c + "'";
  }
  constexpr const char* HEX = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  return std::string("byte 0x") + HEX[byte / 16] + HEX[byte % 16];
}

bool startsWithToken(std::string_view rest) {
  Input input = inputOf(rest);
  return peg::parse<peg::at<rule::AnyToken>>(input);
}

// Why rest starts with no token; "" when it does, and for nothing.
std::string wrongToken(std::string_view rest) {
  if (rest.empty() || startsWithToken(rest)) {
    return {};
  }
  switch (rest.front()) {
    case '\'':
      return "a text without its closing quote";
    case '\\':
      return "no name after the backslash";
    case '_':
      return "a name that starts with _ needs a backslash before it";
    case 't':
    case 'f':
      return "the truth values are TRUE and FALSE, in capitals";
    default:
      return describe(rest.front()) + " is no part of a constraint";
  }
}

}  // namespace

Parsed parseConstraint(std::string_view constraint) {
  if (constraint.size() > MOST_BYTES) {
    throw InvalidConstraintText("more than " + std::to_string(MOST_BYTES) + " bytes", MOST_BYTES);
  }
  Builder builder(constraint);
  Input input = inputOf(constraint);
  peg::parse<rule::Constraint>(input, builder);
  return {builder.result(), builder.tokens()};
}

}  // namespace zk::agent::etcl
