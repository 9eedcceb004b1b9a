// SPDX-License-Identifier: MIT
//
// ORVID_DETAIL_EACH(MACRO, a, b, ...) is MACRO(a) MACRO(b) ..., for one to 100 arguments. The
// preprocessor has no loops, so the steps are written down.

#pragma once

#define ORVID_DETAIL_EACH_1(m, a) m(a)
#define ORVID_DETAIL_EACH_2(m, a, ...) m(a) ORVID_DETAIL_EACH_1(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_3(m, a, ...) m(a) ORVID_DETAIL_EACH_2(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_4(m, a, ...) m(a) ORVID_DETAIL_EACH_3(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_5(m, a, ...) m(a) ORVID_DETAIL_EACH_4(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_6(m, a, ...) m(a) ORVID_DETAIL_EACH_5(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_7(m, a, ...) m(a) ORVID_DETAIL_EACH_6(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_8(m, a, ...) m(a) ORVID_DETAIL_EACH_7(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_9(m, a, ...) m(a) ORVID_DETAIL_EACH_8(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_10(m, a, ...) m(a) ORVID_DETAIL_EACH_9(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_11(m, a, ...) m(a) ORVID_DETAIL_EACH_10(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_12(m, a, ...) m(a) ORVID_DETAIL_EACH_11(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_13(m, a, ...) m(a) ORVID_DETAIL_EACH_12(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_14(m, a, ...) m(a) ORVID_DETAIL_EACH_13(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_15(m, a, ...) m(a) ORVID_DETAIL_EACH_14(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_16(m, a, ...) m(a) ORVID_DETAIL_EACH_15(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_17(m, a, ...) m(a) ORVID_DETAIL_EACH_16(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_18(m, a, ...) m(a) ORVID_DETAIL_EACH_17(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_19(m, a, ...) m(a) ORVID_DETAIL_EACH_18(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_20(m, a, ...) m(a) ORVID_DETAIL_EACH_19(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_21(m, a, ...) m(a) ORVID_DETAIL_EACH_20(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_22(m, a, ...) m(a) ORVID_DETAIL_EACH_21(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_23(m, a, ...) m(a) ORVID_DETAIL_EACH_22(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_24(m, a, ...) m(a) ORVID_DETAIL_EACH_23(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_25(m, a, ...) m(a) ORVID_DETAIL_EACH_24(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_26(m, a, ...) m(a) ORVID_DETAIL_EACH_25(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_27(m, a, ...) m(a) ORVID_DETAIL_EACH_26(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_28(m, a, ...) m(a) ORVID_DETAIL_EACH_27(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_29(m, a, ...) m(a) ORVID_DETAIL_EACH_28(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_30(m, a, ...) m(a) ORVID_DETAIL_EACH_29(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_31(m, a, ...) m(a) ORVID_DETAIL_EACH_30(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_32(m, a, ...) m(a) ORVID_DETAIL_EACH_31(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_33(m, a, ...) m(a) ORVID_DETAIL_EACH_32(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_34(m, a, ...) m(a) ORVID_DETAIL_EACH_33(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_35(m, a, ...) m(a) ORVID_DETAIL_EACH_34(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_36(m, a, ...) m(a) ORVID_DETAIL_EACH_35(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_37(m, a, ...) m(a) ORVID_DETAIL_EACH_36(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_38(m, a, ...) m(a) ORVID_DETAIL_EACH_37(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_39(m, a, ...) m(a) ORVID_DETAIL_EACH_38(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_40(m, a, ...) m(a) ORVID_DETAIL_EACH_39(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_41(m, a, ...) m(a) ORVID_DETAIL_EACH_40(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_42(m, a, ...) m(a) ORVID_DETAIL_EACH_41(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_43(m, a, ...) m(a) ORVID_DETAIL_EACH_42(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_44(m, a, ...) m(a) ORVID_DETAIL_EACH_43(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_45(m, a, ...) m(a) ORVID_DETAIL_EACH_44(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_46(m, a, ...) m(a) ORVID_DETAIL_EACH_45(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_47(m, a, ...) m(a) ORVID_DETAIL_EACH_46(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_48(m, a, ...) m(a) ORVID_DETAIL_EACH_47(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_49(m, a, ...) m(a) ORVID_DETAIL_EACH_48(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_50(m, a, ...) m(a) ORVID_DETAIL_EACH_49(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_51(m, a, ...) m(a) ORVID_DETAIL_EACH_50(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_52(m, a, ...) m(a) ORVID_DETAIL_EACH_51(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_53(m, a, ...) m(a) ORVID_DETAIL_EACH_52(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_54(m, a, ...) m(a) ORVID_DETAIL_EACH_53(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_55(m, a, ...) m(a) ORVID_DETAIL_EACH_54(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_56(m, a, ...) m(a) ORVID_DETAIL_EACH_55(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_57(m, a, ...) m(a) ORVID_DETAIL_EACH_56(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_58(m, a, ...) m(a) ORVID_DETAIL_EACH_57(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_59(m, a, ...) m(a) ORVID_DETAIL_EACH_58(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_60(m, a, ...) m(a) ORVID_DETAIL_EACH_59(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_61(m, a, ...) m(a) ORVID_DETAIL_EACH_60(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_62(m, a, ...) m(a) ORVID_DETAIL_EACH_61(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_63(m, a, ...) m(a) ORVID_DETAIL_EACH_62(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_64(m, a, ...) m(a) ORVID_DETAIL_EACH_63(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_65(m, a, ...) m(a) ORVID_DETAIL_EACH_64(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_66(m, a, ...) m(a) ORVID_DETAIL_EACH_65(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_67(m, a, ...) m(a) ORVID_DETAIL_EACH_66(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_68(m, a, ...) m(a) ORVID_DETAIL_EACH_67(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_69(m, a, ...) m(a) ORVID_DETAIL_EACH_68(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_70(m, a, ...) m(a) ORVID_DETAIL_EACH_69(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_71(m, a, ...) m(a) ORVID_DETAIL_EACH_70(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_72(m, a, ...) m(a) ORVID_DETAIL_EACH_71(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_73(m, a, ...) m(a) ORVID_DETAIL_EACH_72(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_74(m, a, ...) m(a) ORVID_DETAIL_EACH_73(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_75(m, a, ...) m(a) ORVID_DETAIL_EACH_74(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_76(m, a, ...) m(a) ORVID_DETAIL_EACH_75(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_77(m, a, ...) m(a) ORVID_DETAIL_EACH_76(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_78(m, a, ...) m(a) ORVID_DETAIL_EACH_77(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_79(m, a, ...) m(a) ORVID_DETAIL_EACH_78(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_80(m, a, ...) m(a) ORVID_DETAIL_EACH_79(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_81(m, a, ...) m(a) ORVID_DETAIL_EACH_80(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_82(m, a, ...) m(a) ORVID_DETAIL_EACH_81(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_83(m, a, ...) m(a) ORVID_DETAIL_EACH_82(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_84(m, a, ...) m(a) ORVID_DETAIL_EACH_83(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_85(m, a, ...) m(a) ORVID_DETAIL_EACH_84(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_86(m, a, ...) m(a) ORVID_DETAIL_EACH_85(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_87(m, a, ...) m(a) ORVID_DETAIL_EACH_86(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_88(m, a, ...) m(a) ORVID_DETAIL_EACH_87(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_89(m, a, ...) m(a) ORVID_DETAIL_EACH_88(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_90(m, a, ...) m(a) ORVID_DETAIL_EACH_89(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_91(m, a, ...) m(a) ORVID_DETAIL_EACH_90(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_92(m, a, ...) m(a) ORVID_DETAIL_EACH_91(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_93(m, a, ...) m(a) ORVID_DETAIL_EACH_92(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_94(m, a, ...) m(a) ORVID_DETAIL_EACH_93(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_95(m, a, ...) m(a) ORVID_DETAIL_EACH_94(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_96(m, a, ...) m(a) ORVID_DETAIL_EACH_95(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_97(m, a, ...) m(a) ORVID_DETAIL_EACH_96(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_98(m, a, ...) m(a) ORVID_DETAIL_EACH_97(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_99(m, a, ...) m(a) ORVID_DETAIL_EACH_98(m, __VA_ARGS__)
#define ORVID_DETAIL_EACH_100(m, a, ...) m(a) ORVID_DETAIL_EACH_99(m, __VA_ARGS__)

#define ORVID_DETAIL_JOIN_AGAIN(a, b) a##b
#define ORVID_DETAIL_JOIN(a, b) ORVID_DETAIL_JOIN_AGAIN(a, b)

// The count: each argument shifts the numbers by one place, and the last parameter is the answer.
// clang-format off
#define ORVID_DETAIL_LAST(a1, a2, a3, a4, a5, a6, a7, a8, a9, a10, a11, a12, a13, a14, a15, a16,  \
    a17, a18, a19, a20, a21, a22, a23, a24, a25, a26, a27, a28, a29, a30, a31, a32, a33, a34,     \
    a35, a36, a37, a38, a39, a40, a41, a42, a43, a44, a45, a46, a47, a48, a49, a50, a51, a52,     \
    a53, a54, a55, a56, a57, a58, a59, a60, a61, a62, a63, a64, a65, a66, a67, a68, a69, a70,     \
    a71, a72, a73, a74, a75, a76, a77, a78, a79, a80, a81, a82, a83, a84, a85, a86, a87, a88,     \
    a89, a90, a91, a92, a93, a94, a95, a96, a97, a98, a99, a100, a101, count, ...) count
#define ORVID_DETAIL_COUNT(...) ORVID_DETAIL_LAST(__VA_ARGS__, 101, 100, 99, 98, 97, 96, 95, 94,  \
    93, 92, 91, 90, 89, 88, 87, 86, 85, 84, 83, 82, 81, 80, 79, 78, 77, 76, 75, 74, 73, 72, 71, 70,   \
    69, 68, 67, 66, 65, 64, 63, 62, 61, 60, 59, 58, 57, 56, 55, 54, 53, 52, 51, 50, 49, 48, 47,   \
    46, 45, 44, 43, 42, 41, 40, 39, 38, 37, 36, 35, 34, 33, 32, 31, 30, 29, 28, 27, 26, 25, 24,   \
    23, 22, 21, 20, 19, 18, 17, 16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0)
// clang-format on

#define ORVID_DETAIL_SECOND(...) ORVID_DETAIL_SECOND_OF(__VA_ARGS__, 0)
#define ORVID_DETAIL_SECOND_OF(a, b, ...) b

// 0 for one argument, 1 for more: the one name that is defined becomes two arguments.
#define ORVID_DETAIL_OTHERS(...) \
    ORVID_DETAIL_SECOND(         \
        ORVID_DETAIL_JOIN(ORVID_DETAIL_OTHERS_OF_, ORVID_DETAIL_COUNT(__VA_ARGS__)), 1)
#define ORVID_DETAIL_OTHERS_OF_1 0, 0

#define ORVID_DETAIL_EACH(m, ...) \
    ORVID_DETAIL_JOIN(ORVID_DETAIL_EACH_, ORVID_DETAIL_COUNT(__VA_ARGS__))(m, __VA_ARGS__)
