#include "differential/vocabulary.hpp"

#include <iterator>
#include <string_view>

namespace differential {

namespace {

using texts = std::u16string_view;

/// Few, so that they collide, and in several cases.
constexpr texts common_names[] = {u"a",     u"A",    u"b",    u"dir", u"dir",
                                  u"inner", u"file", u"FILE", u"c d", u"Dir"};

constexpr texts odd_names[] = {u"a.",     u"a ",     u"b. .",     u"dir.",   u" a",
                               u"a*b",    u"a?",     u"x<y",      u"a|b",    u"a\tb",
                               u"a\"",    u"a.b",    u"a.b.",     u"\u00E9", u"\u00C9",
                               u"\u0436", u"\u0416", u"file.txt", u"ab:c"};

/// Names that only the treatment of pathnames may see. What Wine does with devices
/// depends on the host, and it drops one of several full stops from a name within.
constexpr texts treated_names[] = {u"con",  u"com1",   u"aux.txt", u"PRN", u"lpt9",
                                   u"nul:", u"nul",    u"NUL.txt", u"...", u"a..",
                                   u"com0", u"nul .x", u". ",      u".a"};

/// None of these is a directory that sequences work in.
constexpr texts roots[] = {u"",      u" ",   u"C:\\", u"C:",          u"\\",          u"Q:\\",
                           u"Q:\\a", u"Q:a", u"Q:",   u"\\\\?\\C:\\", u"\\\\?\\Q:\\a"};

std::u16string random_name(dice &dice, bool is_treated_only)
{
    if (dice.chance(84))
        return std::u16string(dice.pick(common_names));
    if (is_treated_only && dice.chance(30))
        return std::u16string(dice.pick(treated_names));
    if (dice.chance(5)) {
        constexpr std::size_t lengths[] = {60, 100, 200, 254, 255, 256};
        return std::u16string(dice.pick(lengths), dice.chance(50) ? u'n' : u'm');
    }
    return std::u16string(dice.pick(odd_names));
}

/// A name, or a step to elsewhere.
std::u16string random_element(dice &dice, bool is_treated_only)
{
    if (dice.chance(5))
        return u".";
    if (dice.chance(6))
        return u"..";
    return random_name(dice, is_treated_only);
}

texts random_separator(dice &dice)
{
    if (dice.chance(88))
        return u"\\";
    return dice.chance(70) ? u"/" : u"\\\\";
}

/// Names below what `text` says already.
void append_elements(std::u16string &text, dice &dice, bool is_treated_only)
{
    constexpr std::size_t depths[] = {1, 1, 1, 1, 2, 2, 2, 3, 4};
    for (std::size_t left = dice.pick(depths); left > 0; --left) {
        text += random_element(dice, is_treated_only);
        if (left > 1)
            text += random_separator(dice);
    }
    if (dice.chance(8))
        text += random_separator(dice);
}

std::u16string random_text(dice &dice, bool is_treated_only)
{
    std::size_t const kind = dice.roll(100);
    std::u16string text;
    if (kind < 3)
        return std::u16string(dice.pick(roots));
    if (kind < 22)
        text = std::u16string{folder_mark, u'\\'};
    else if (kind < 34)
        text = u"\\\\?\\" + std::u16string{folder_mark, u'\\'};
    else if (kind < 39)
        text = std::u16string{rooted_mark, u'\\'};
    else if (kind < 43)
        text = u"C:";
    else if (kind < 45)
        text = std::u16string{u'.', u'.', u'\\', name_mark, u'\\'};
    append_elements(text, dice, is_treated_only);
    return text;
}

} // namespace

std::u16string random_pathname(dice &dice)
{
    return random_text(dice, false);
}

std::u16string random_text_to_treat(dice &dice)
{
    return random_text(dice, true);
}

std::u16string random_directory(dice &dice)
{
    constexpr texts below[] = {u"", u"\\", u"\\dir", u"\\dir\\inner", u"\\a", u"\\file"};
    std::u16string text = random_pathname(dice);
    // The simulation doesn't model a current directory behind a long prefix.
    if (text.starts_with(u"\\\\") || dice.chance(50))
        text = folder_mark + std::u16string(dice.pick(below));
    return text;
}

std::u16string random_pattern(dice &dice)
{
    constexpr texts patterns[] = {u"*",  u"*",    u"*.*",   u"a*", u"?",
                                  u"*r", u"f*le", u"*.txt", u"??r"};
    if (dice.chance(15))
        return random_pathname(dice);
    std::u16string directory = random_directory(dice);
    if (directory != u"\\") // two of them would begin the name of a server
        directory += u'\\';
    return directory + std::u16string(dice.pick(patterns));
}

std::u16string random_shape(dice &dice)
{
    // No separator follows: of runs in a root the two systems make different things.
    constexpr texts beginnings[] = {u"",        u"",     u"",           u"\\",         u"C:\\",
                                    u"C:/",     u"C:",   u"Q:",         u"\\\\s\\t\\", u"//s/t/",
                                    u"\\\\?\\", u"//./", u"\\\\?\\C:\\"};
    constexpr texts pieces[] = {u"\\", u"\\", u"/",  u":",  u".", u".",   u" ",   u"a",
                                u"b",  u"C:", u"..", u".:", u"?", u"a..", u"nul", u"\\\\"};
    std::u16string text(dice.pick(beginnings));
    std::size_t const begin = text.size();
    for (std::size_t left = dice.roll(9); left > 0; --left) {
        texts const piece = dice.pick(pieces);
        if (text.size() > begin || piece.find_first_of(u"\\/") != 0)
            text += piece;
    }
    return text;
}

std::u16string random_variable(dice &dice)
{
    constexpr texts names[] = {u"=Q:",         u"=Q:", u"=q:", u"=C:",        u"FL_VARIABLE",
                               u"fl_variable", u"",    u"=",   u"FL=VARIABLE"};
    return std::u16string(dice.pick(names));
}

std::u16string random_value(dice &dice, std::u16string_view variable)
{
    // as the C runtime notes it: a directory that is there
    if (variable.starts_with(u'='))
        return std::u16string(1, folder_mark);
    return std::u16string(dice.roll(3), u'v');
}

} // namespace differential
