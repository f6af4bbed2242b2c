#pragma once

#include <QLatin1String>

/// The words of a feature file (.vxf). Lines end in CR LF, the last one in nothing.
namespace FeatureFileFormat {

constexpr QLatin1String ATTRIBUTE_ADDRESS("address");
constexpr QLatin1String ATTRIBUTE_FROM("from");
constexpr QLatin1String ATTRIBUTE_LEN("len");
constexpr QLatin1String ATTRIBUTE_NAME("name");
constexpr QLatin1String ATTRIBUTE_REG("reg");
constexpr QLatin1String ATTRIBUTE_TO("to");
constexpr QLatin1String ATTRIBUTE_VARIABLES("variables");
constexpr QLatin1String ATTRIBUTE_VERSION("version");

constexpr QLatin1String ELEMENT_BOARD_TYPE("BoardDeviceType");
constexpr QLatin1String ELEMENT_COMPLEX_FEATURE("ComplexFeature");
constexpr QLatin1String ELEMENT_FEATURES("Features");
constexpr QLatin1String ELEMENT_MODEL("DeviceModelName");
constexpr QLatin1String ELEMENT_NAME("Name");
constexpr QLatin1String ELEMENT_TYPE("Type");
constexpr QLatin1String ELEMENT_VALUE("Value");

constexpr QLatin1String XML_DECLARATION("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n");
constexpr QLatin1String FILE_BEGIN("<FeaturesFile version=\"%1\">\r\n");
constexpr QLatin1String FILE_END("</FeaturesFile>");
constexpr QLatin1String HEADER("<%1>%2</%1>\r\n");
constexpr QLatin1String FEATURES_BEGIN("<Features>\r\n");
constexpr QLatin1String FEATURES_END("</Features>\r\n");
constexpr QLatin1String FEATURE("<Feature>\r\n<Name>%1</Name>\r\n<Type>%2</Type>\r\n"
                                "<Value>%3</Value>\r\n<Streamable>Yes</Streamable>\r\n"
                                "</Feature>\r\n");
constexpr QLatin1String COMPLEX_BEGIN("<ComplexFeature name=\"%1\" len=\"%2\" reg=\"%3\">\r\n");
constexpr QLatin1String COMPLEX_END("</ComplexFeature>\r\n");
constexpr QLatin1String REG_VALUE("<RegValue address=\"%1\" variables=\"%2\">%3</RegValue>\r\n");
constexpr QLatin1String REG_VALUE_CONVERTED(
    "<RegValue address=\"%1\" variables=\"%2\" to=\"%4\" from=\"%5\">%3</RegValue>\r\n");

/// One record of a bag: marker, serial number, marker, feature file.
constexpr QLatin1String BAG_SERIAL_MARKER("\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n");
constexpr QLatin1String BAG_FILE_MARKER("\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\n");
/// Where a host keeps a bag while it collects one.
constexpr QLatin1String BAG_TEMP_FILE("/FeatureBagTempFile_%1");

constexpr QLatin1String FILE_NAME("%1_%2.vxf");
constexpr QLatin1String FILE_FILTER("(*.vxf)");
constexpr QLatin1String FILE_SUFFIX("vxf");

constexpr qint64 MAX_FILE_SIZE = 64LL * 1024 * 1024;
constexpr int MAX_ELEMENT_DEPTH = 32;
/// Bytes of the longest register that is saved or restored.
constexpr qint64 MAX_REGISTER_LENGTH = 0x100000;

} // namespace FeatureFileFormat
