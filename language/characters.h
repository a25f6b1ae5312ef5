#ifndef ZANT_LANGUAGE_CHARACTERS_H
#define ZANT_LANGUAGE_CHARACTERS_H

namespace Zant::Language {

/// What single bytes mean in command text.
enum CharacterClass : unsigned char {
    Space = 1,
    Delimiter = 2,  // ends a bare word or name, as white space does
    Digit = 4,
    Letter = 8,    // a to z and A to Z
    Exponent = 16  // begins that of a number; a letter as well
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
        for (char letter = 'a'; letter <= 'z'; ++letter) {
            set(letter, Letter);
            set(static_cast<char>(letter - 'a' + 'A'), Letter);
        }
        set('e', Exponent);
        set('E', Exponent);
    }
    constexpr void set(char character, CharacterClass to) { classes[static_cast<unsigned char>(character)] |= to; }
};
inline constexpr CharacterTable characterTable;

/// @return whether the character is of one of the classes
inline bool isCharacter(char character, int classes) {
    return (characterTable.classes[static_cast<unsigned char>(character)] & classes) != 0;
}

}  // namespace Zant::Language

#endif
