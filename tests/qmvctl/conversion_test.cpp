#include "conversion.h"

#include <gtest/gtest.h>

#include "names.h"

namespace qmvctl::test {
namespace {

// A sensor with the 10-bit factors split as the record holds them.
full_sdr_rec sensor(int m, int b, int b_exponent, int r_exponent, int format = 0, int linearization = 0) {
  full_sdr_rec sensor{};
  sensor.M = m & 0xFF;
  sensor.MTolerance = (m >> 2 & 0xC0) | 0x3F;
  sensor.B = b & 0xFF;
  sensor.BAccuracy = (b >> 2 & 0xC0) | 0x3F;
  sensor.RBExp = (r_exponent & 0xF) << 4 | (b_exponent & 0xF);
  sensor.RateUnit = format << 6;
  sensor.Linearization = linearization;
  return sensor;
}

TEST(Conversion, IsLinearWithBothExponents) {
  EXPECT_DOUBLE_EQ(*convert(sensor(53, 0, 0, -3), 252), 13.356);
  EXPECT_DOUBLE_EQ(*convert(sensor(2, 5, 1, 0), 10), 70);     // 2*10 + 5*10
  EXPECT_DOUBLE_EQ(*convert(sensor(2, 5, -1, 2), 10), 2050);  // (20 + 0.5) * 100
}

TEST(Conversion, TakesTenBitSignedFactors) {
  EXPECT_DOUBLE_EQ(*convert(sensor(511, 0, 0, 0), 1), 511);
  EXPECT_DOUBLE_EQ(*convert(sensor(-512, 0, 0, 0), 1), -512);
  EXPECT_DOUBLE_EQ(*convert(sensor(1, -100, 0, 0), 10), -90);
  EXPECT_DOUBLE_EQ(*convert(sensor(1, 300, 0, 0), 10), 310);
}

TEST(Conversion, ReadsTheRawByteInItsDataFormat) {
  EXPECT_DOUBLE_EQ(*convert(sensor(1, 0, 0, 0, 0), 0xFE), 254);
  EXPECT_DOUBLE_EQ(*convert(sensor(1, 0, 0, 0, 1), 0xFE), -1);  // one's complement
  EXPECT_DOUBLE_EQ(*convert(sensor(1, 0, 0, 0, 2), 0xFE), -2);  // two's complement
  EXPECT_FALSE(convert(sensor(1, 0, 0, 0, 3), 0xFE));
}

TEST(Conversion, AppliesTheLinearizationFunction) {
  const double expected[] = {4, 1.3862943611198906, 0.6020599913279624, 2, 54.598150033144236, 10000, 16, 0.25, 16, 64,
                             2, 1.5874010519681994};
  for (int function = 0; function < 12; ++function) {
    EXPECT_DOUBLE_EQ(*convert(sensor(1, 0, 0, 0, 0, function), 4), expected[function]) << function;
  }
}

TEST(Conversion, OfANonLinearSensorOrAnInfiniteResultIsNone) {
  EXPECT_FALSE(convert(sensor(1, 0, 0, 0, 0, 0x70), 4));
  EXPECT_FALSE(convert(sensor(1, 0, 0, 0, 0, 12), 4));
  EXPECT_FALSE(convert(sensor(1, 0, 0, 0, 0, 7), 0));
}

TEST(Conversion, TakesOneByteOfEachFactorFromAHostileRow) {
  full_sdr_rec hostile = sensor(3, 5, 0, 0);
  hostile.M = INT32_MAX - 0xFF + 3;
  hostile.B = INT32_MIN + 5;
  EXPECT_DOUBLE_EQ(*convert(hostile, 200), 605);
}

TEST(Formula, IsPutTogetherFromTheBytesOfTheRecord) {
  full_sdr_rec record = sensor(-300, 300, -2, 3);
  record.MTolerance = (record.MTolerance & 0xC0) | 0x15;
  record.BAccuracy = (record.BAccuracy & 0xC0) | 0x2A;
  record.Accuracy = 0x54;  // upper bits 5, exponent 1, no direction
  const Formula formula = formula_of(record);
  EXPECT_EQ(formula.m, -300);
  EXPECT_EQ(formula.b, 300);
  EXPECT_EQ(formula.b_exponent, -2);
  EXPECT_EQ(formula.r_exponent, 3);
  EXPECT_EQ(formula.tolerance, 0x15);
  EXPECT_DOUBLE_EQ(formula.accuracy, 36.2);  // 5 * 64 + 42 hundredths, ten times
}

TEST(Linearization, IsNamedByItsFunction) {
  EXPECT_EQ(linearization_name(0), "linear");
  EXPECT_EQ(linearization_name(7), "1/x");
  EXPECT_EQ(linearization_name(11), "cube root");
  for (const int of_its_own : {12, 0x70, 0x7F, -1}) EXPECT_EQ(linearization_name(of_its_own), "non-linear");
}

TEST(Reading, IsGivenWhereItsFlagSaysSo) {
  full_sdr_rec record{};
  for (size_t reading = 0; reading < 3; ++reading) {
    record.AnalogCharFlag = 1 << reading;
    for (size_t other = 0; other < 3; ++other) EXPECT_EQ(has_reading(record, other), other == reading);
  }
  EXPECT_TRUE(has_reading(record, 3) && has_reading(record, 4)) << "the largest and the smallest one always";
  record.RateUnit = 3 << 6;
  record.AnalogCharFlag = 7;
  for (size_t reading = 0; reading < 5; ++reading) EXPECT_FALSE(has_reading(record, reading)) << "it is not analog";
}

TEST(Rounding, KeepsTheDecimalsOfOneCount) {
  EXPECT_DOUBLE_EQ(rounded(sensor(53, 0, 0, -3), 13.356), 13.36);
  EXPECT_DOUBLE_EQ(rounded(sensor(53, 0, 0, 0), 1961.4), 1961);
  EXPECT_DOUBLE_EQ(rounded(sensor(1, 0, 0, -3), 0.0126), 0.013);
  EXPECT_DOUBLE_EQ(rounded(sensor(10, 0, 0, 0), 128), 128);
  EXPECT_DOUBLE_EQ(rounded(sensor(1, 0, 0, 0, 0, 7), 0.12345), 0.123);
}

TEST(ThresholdMask, NamesTheThresholdsInItsOrder) {
  full_sdr_rec sensor{};
  sensor.EventTypeCode = 1;
  sensor.SensorCaps = 2 << 2;
  for (size_t threshold = 0; threshold < 6; ++threshold) {
    sensor.DiscreteReadingMask = 1 << threshold;
    for (size_t other = 0; other < 6; ++other) EXPECT_EQ(has_threshold(sensor, other), other == threshold);
  }
}

TEST(ThresholdMask, SettableThresholdsCount) {
  full_sdr_rec sensor{};
  sensor.EventTypeCode = 1;
  sensor.SensorCaps = 2 << 2;
  sensor.DiscreteReadingMask = 0x1000;
  EXPECT_TRUE(has_threshold(sensor, 4));
  EXPECT_FALSE(has_threshold(sensor, 3));
}

TEST(ThresholdMask, OfADiscreteSensorOrOneWithoutAccessIsNone) {
  full_sdr_rec sensor{};
  sensor.DiscreteReadingMask = 0x3F3F;
  sensor.EventTypeCode = 0x6F;
  sensor.SensorCaps = 2 << 2;
  EXPECT_FALSE(has_threshold(sensor, 0));
  sensor.EventTypeCode = 1;
  sensor.SensorCaps = 0;
  EXPECT_FALSE(has_threshold(sensor, 0));
}

TEST(Names, OfSensorTypesEntitiesAndUnitsFollowTheTables) {
  EXPECT_EQ(sensor_type_name(0x01), "Temperature");
  EXPECT_EQ(sensor_type_name(0x2C), "FRU State");
  EXPECT_EQ(sensor_type_name(0x2D), "type 2Dh");
  EXPECT_EQ(sensor_type_name(0xDC), "OEM type DCh");
  EXPECT_EQ(entity_name(10), "Power Supply");
  EXPECT_EQ(entity_name(0x42), "Baseboard");
  EXPECT_EQ(entity_name(209), "entity D1h");
  EXPECT_EQ(unit_name(4), "Volts");
  EXPECT_EQ(unit_name(18), "RPM");
  EXPECT_EQ(unit_name(92), "grams");
  EXPECT_EQ(unit_name(93), "unit 5Dh");
}

TEST(ReadingUnit, IsMadeOfAllThreeBytes) {
  EXPECT_EQ(reading_unit(0x80, 1, 0), "degrees C");
  EXPECT_EQ(reading_unit(0x01, 0, 0), "%");
  EXPECT_EQ(reading_unit(0x01, 6, 0), "% Watts");
  EXPECT_EQ(reading_unit(0x02, 6, 24), "Watts/hours");
  EXPECT_EQ(reading_unit(0x04, 6, 24), "Watts*hours");
  EXPECT_EQ(reading_unit(0x20, 78, 0), "hits per minute");
  EXPECT_EQ(reading_unit(0, 0, 0), "");
}

TEST(CimSensorType, FollowsTheTypeAndForOtherUnitsTheUnit) {
  EXPECT_EQ(cim_sensor_type(0x01, 1), 2);
  EXPECT_EQ(cim_sensor_type(0x02, 4), 3);
  EXPECT_EQ(cim_sensor_type(0x03, 5), 4);
  EXPECT_EQ(cim_sensor_type(0x04, 18), 5);
  EXPECT_EQ(cim_sensor_type(0x04, 0), 1);
  EXPECT_EQ(cim_sensor_type(0x05, 0), 16);
  EXPECT_EQ(cim_sensor_type(0x14, 0), 7);
  EXPECT_EQ(cim_sensor_type(0x25, 0), 11);
  EXPECT_EQ(cim_sensor_type(0x0B, 6), 13);
  EXPECT_EQ(cim_sensor_type(0x0B, 17), 12);
  EXPECT_EQ(cim_sensor_type(0x0B, 1), 2);
  EXPECT_EQ(cim_sensor_type(0x0B, 0), 1);
  EXPECT_EQ(cim_sensor_type(0x08, 6), 1);
}

TEST(EventName, FollowsTheGenericTypeOrTheSensorType) {
  EXPECT_EQ(event_name(0x01, 0x02, 9), "Upper Critical going high");
  EXPECT_EQ(event_name(0x0B, 0x08, 1), "Redundancy Lost");
  EXPECT_EQ(event_name(0x6F, 0x10, 2), "Log area reset/cleared");
  EXPECT_EQ(event_name(0x6F, 0x22, 13), "state 13");
  EXPECT_EQ(event_name(0x6F, 0xC5, 3), "state 3");
  EXPECT_EQ(event_name(0x71, 0x13, 0), "state 0");
  EXPECT_EQ(event_name(0x01, 0x02, 12), "state 12");
}

TEST(Names, OfEventStatesSayHowBadTheyAre) {
  constexpr bool kIsDeasserted = true;
  EXPECT_EQ(event_state(0x01, 0x02, 7, false), "Warning");
  EXPECT_EQ(event_state(0x01, 0x02, 9, false), "Critical");
  EXPECT_EQ(event_state(0x01, 0x02, 9, kIsDeasserted), "Nominal");
  EXPECT_EQ(event_state(0x0B, 0x08, 0, kIsDeasserted), "Ended");
  EXPECT_EQ(event_state(0x07, 0x02, 0, false), "Nominal");
  EXPECT_EQ(event_state(0x0B, 0x08, 1, false), "Critical");
  EXPECT_EQ(event_state(0x6F, 0x0C, 0, false), "Warning");
  EXPECT_EQ(event_state(0x6F, 0x23, 8, false), "Warning");
  EXPECT_EQ(event_state(0x6F, 0x23, 4, false), "");
  EXPECT_EQ(event_state(0x6F, 0xC5, 3, false), "");
  EXPECT_EQ(event_state(0x01, 0x02, -1, false), "");
}

}  // namespace
}  // namespace qmvctl::test
