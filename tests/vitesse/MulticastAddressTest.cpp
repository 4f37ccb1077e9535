#include <array>
#include <locale>

#include "tests/vitesse/SwitchTest.hpp"

namespace {

using Mac = std::array<unsigned char, 6>;

class MulticastAddressTest : public SwitchTest {
protected:
    MulticastAddressTest() : SwitchTest(0) {}

    /// The six bytes, the last one on the wire first; what is around them must stay as it is.
    Mac convert(std::string const& text) {
        std::array<unsigned char, 22> memory{};
        memory.fill(0xA5);
        chip.ipMulticastStringtoMacAddress(text, memory.data() + 8);
        Mac mac{};
        for (std::size_t i = 0; i < memory.size(); ++i) {
            if (i >= 8 && i < 14) {
                mac[i - 8] = memory[i];
            } else {
                EXPECT_EQ(memory[i], 0xA5) << "byte " << i << " of '" << text << "'";
            }
        }
        return mac;
    }
};

/// Groups the digits of numbers by dots, as many countries do.
class DotsInNumbers : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Makes a locale the process's own while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(std::locale const& locale) : _before(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(_before); }
    GlobalLocale(GlobalLocale const&) = delete;
    GlobalLocale& operator=(GlobalLocale const&) = delete;

private:
    std::locale _before;
};

TEST_F(MulticastAddressTest, TakesTheLowTwentyThreeBits) {
    EXPECT_EQ(convert("239.129.1.2"), (Mac{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("224.0.0.1"), (Mac{0x01, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.255.255.255"), (Mac{0xFF, 0xFF, 0x7F, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("224.128.0.0"), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, TheFirstNumberAndTheTopBitOfTheSecondDoNotCount) {
    EXPECT_EQ(convert("224.1.1.2"), convert("239.129.1.2"));
}

TEST_F(MulticastAddressTest, DotsSeparateInAHostThatGroupsDigitsByThem) {
    GlobalLocale const grouping(std::locale(std::locale::classic(), new DotsInNumbers));
    EXPECT_EQ(convert("239.129.1.2"), (Mac{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.100.200"), (Mac{0xC8, 0x64, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, AnySeparatorWillDo) {
    EXPECT_EQ(convert("239,129;3:4"), (Mac{0x04, 0x03, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, LargeNumbersAreCut) {
    EXPECT_EQ(convert("239.300.1.2"), (Mac{0x02, 0x01, 0x2C, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.1.300.511"), (Mac{0xFF, 0x2C, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("1000.1.65537.256"), (Mac{0x00, 0x01, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, MissingNumbersAreZero) {
    EXPECT_EQ(convert(""), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239"), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239."), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129"), (Mac{0x00, 0x00, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.7"), (Mac{0x00, 0x07, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.7."), (Mac{0x00, 0x07, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, WhatFollowsTheFourthNumberIsLeft) {
    EXPECT_EQ(convert("239.129.1.2."), (Mac{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.1.2.77.88.99.111.222.3.4.5.6.7.8.9.10.11.12.13.14.15.16"),
              (Mac{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.1.2 and more"), (Mac{0x02, 0x01, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, TextThatIsNoAddressStopsAtTheFirstNumberThatIsNone) {
    EXPECT_EQ(convert("group"), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("....."), (Mac{0x00, 0x00, 0x00, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.x.2"), (Mac{0x00, 0x00, 0x01, 0x5E, 0x00, 0x01}));
    EXPECT_EQ(convert("239.129.1.x"), (Mac{0x00, 0x01, 0x01, 0x5E, 0x00, 0x01}));
}

TEST_F(MulticastAddressTest, NoTextReachesBeyondTheSixBytes) {
    std::string numbers;
    for (int i = 0; i < 10'000; ++i) {
        numbers += "1.";
    }
    for (auto const& text :
         {numbers, std::string(10'000, '9'), std::string(10'000, '.'), std::string(100, '\0'),
          std::string("239.-1.-2.-3"), std::string("239.99999999999999999999.1.2"),
          std::string("239.1.99999999999999999999.2"), std::string("0x10.0x20.0x30.0x40"),
          std::string("\xFF\xFE\n\r\t 1 2 3 4"), std::string("239.1.2.99999999999999999999.5")}) {
        Mac const mac = convert(text);
        EXPECT_EQ(mac[3], 0x5E);
        EXPECT_EQ(mac[4], 0x00);
        EXPECT_EQ(mac[5], 0x01);
        EXPECT_LT(mac[2], 0x80);
    }
}

} // namespace
