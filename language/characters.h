#ifndef ZANT_LANGUAGE_CHARACTERS_H
#define ZANT_LANGUAGE_CHARACTERS_H

namespace Zant::Language {

/// What single bytes mean in command text.
enum CharacterClass : unsigned char {
    Space = 1,
    Delimiter = 2,  // ends a bare word or name, as white space does
    Digit = 4
};

struct CharacterTable {
    unsigned char classes[256] = {};

    constexpr CharacterTable() {
        for (const char space : {' ', '\t', '\n', '\v', '\f', '\r'})
            set(space, Space);
        for (const char mark : {',', ';', '{', '}', '(', ')', '"', '\0'})
            set(mark, Delimiter);
        for (char digit = '0'; digit <= '9'; ++digit)
            set(digit, Digit);
    }
    constexpr void set(char character, CharacterClass to) { classes[static_cast<unsigned char>(character)] = to; }
};
inline constexpr CharacterTable characterTable;

/// @return whether the character is of one of the classes
inline bool isCharacter(char character, int classes) {
    return (characterTable.classes[static_cast<unsigned char>(character)] & classes) != 0;
}

}  // namespace Zant::Language

#endif
