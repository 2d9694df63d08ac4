// The line merge: both sides' changes kept, overlaps shown in diff3 style with line ends that
// match the file's.

#include "update/merge.h"

#include <gtest/gtest.h>

namespace tsaw::update {
namespace {

TEST(MergeTextTest, KeepsBothSidesChangesAndCrLf) {
  const TMergeResult merged = MergeText("a\r\nb\r\nc\r\nd\r\ne\r\n", "A\r\nb\r\nc\r\nd\r\ne\r\n", "a\r\nb\r\nc\r\nd\r\nE\r\n");
  EXPECT_TRUE(merged.Clean);
  EXPECT_EQ(merged.Text, "A\r\nb\r\nc\r\nd\r\nE\r\n");
}

TEST(MergeTextTest, OverlappingChangesGiveDiff3MarkersWithTheFilesLineEnds) {
  const TMergeResult crlf = MergeText("a\r\nb\r\nc\r\n", "a\r\nB1\r\nc\r\n", "a\r\nB2\r\nc\r\n");
  EXPECT_FALSE(crlf.Clean);
  EXPECT_EQ(crlf.Text,
            "a\r\n<<<<<<< ours (your edit)\r\nB1\r\n||||||| base (last generation)\r\nb\r\n=======\r\nB2\r\n"
            ">>>>>>> theirs (new generation)\r\nc\r\n");
  const TMergeResult lf = MergeText("a\nb\nc\n", "a\nB1\nc\n", "a\nB2\nc\n");
  EXPECT_EQ(lf.Text,
            "a\n<<<<<<< ours (your edit)\nB1\n||||||| base (last generation)\nb\n=======\nB2\n"
            ">>>>>>> theirs (new generation)\nc\n");
}

TEST(MergeTextTest, MergesWindows1252BytesAsTheyAre) {
  const TMergeResult merged = MergeText("caf\xe9\r\nx\r\ny\r\n", "caf\xe9!\r\nx\r\ny\r\n", "caf\xe9\r\nx\r\nY\xe9\r\n");
  EXPECT_TRUE(merged.Clean);
  EXPECT_EQ(merged.Text, "caf\xe9!\r\nx\r\nY\xe9\r\n");
}

TEST(MergeTextTest, BinaryMeansANulByteNearTheStart) {
  EXPECT_TRUE(LooksBinary(std::string("MZ\0\x01", 4)));
  EXPECT_FALSE(LooksBinary("unit A;\r\n"));
  EXPECT_FALSE(LooksBinary(std::string(8000, 'a') + std::string(1, '\0')));
}

}  // namespace
}  // namespace tsaw::update
