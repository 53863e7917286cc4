#include "text/Buffers.h"

#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <string>

TEST(ConstBuffer, IsConsumedFromTheFront) {
    ConstBuffer in("abcd"_data);
    EXPECT_EQ(in.Size(), 4u);
    EXPECT_EQ(in.Take(), 'a');
    in.Skip(2);
    EXPECT_EQ(*in.Next(), 'd');
    EXPECT_EQ(MakeString(in.Rest()), "d");
    EXPECT_FALSE(in.empty());
    in.Skip(1);
    EXPECT_TRUE(in.empty());
    EXPECT_TRUE(in.Rest().empty());
}

TEST(ConstBuffer, IsEmptyWithoutARange) {
    EXPECT_TRUE(ConstBuffer().empty());
    EXPECT_EQ(ConstBuffer().Size(), 0u);
    unsigned char const bytes[] = {1, 2};
    EXPECT_TRUE(ConstBuffer(ConstData(bytes + 2, bytes)).empty());
}

TEST(Buffer, IsFullWithoutARange) {
    EXPECT_TRUE(Buffer().Full());
    EXPECT_EQ(Buffer().Room(), 0u);
    EXPECT_TRUE(Buffer().Written().empty());
}

TEST(Buffer, RemembersWhatWasWritten) {
    unsigned char room[4];
    Buffer out(Data(room, room + 4));
    EXPECT_TRUE(out.Written().empty());
    out << 'a' << static_cast<unsigned char>(0xff);
    EXPECT_EQ(MakeString(out.Written()), "a\xff");
    EXPECT_EQ(out.Room(), 2u);
    *out.Next() = 'z';
    out.Advance(1);
    EXPECT_EQ(MakeString(out.Written()), "a\xffz");
}

TEST(Buffer, RefusesAByteWhenItIsFull) {
    unsigned char room[1];
    Buffer out(Data(room, room + 1));
    out << 'a';
    EXPECT_TRUE(out.Full());
    EXPECT_THROW(out << 'b', DataOverflow);
    EXPECT_THROW(out << static_cast<unsigned char>('b'), DataOverflow);
    EXPECT_EQ(MakeString(out.Written()), "a");
    Buffer none;
    EXPECT_THROW(none << 'b', DataOverflow);
}

TEST(Buffer, TakesFromACursorWhatFits) {
    unsigned char room[4];
    Buffer out(Data(room, room + 4));
    ConstBuffer in("abcdef"_data);
    out << in;
    EXPECT_TRUE(out.Full());
    EXPECT_EQ(MakeString(out.Written()), "abcd");
    EXPECT_EQ(MakeString(in.Rest()), "ef");
    out << in;
    EXPECT_EQ(MakeString(in.Rest()), "ef");

    Buffer more(Data(room, room + 4));
    more << in;
    EXPECT_TRUE(in.empty());
    EXPECT_EQ(more.Room(), 2u);
    more << in;
    EXPECT_EQ(more.Room(), 2u);
}

TEST(Buffer, CutsARangeOffWhereItIsFull) {
    unsigned char room[4];
    Buffer out(Data(room, room + 4));
    out << "abc"_data
        << "def"_data;
    EXPECT_EQ(MakeString(out.Written()), "abcd");
    out << ConstData();
    EXPECT_EQ(MakeString(out.Written()), "abcd");
}
