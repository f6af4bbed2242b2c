#pragma once

#include <QLatin1String>

/// The words of a feature file (.vxf). Lines end in CR LF, the last one in nothing.
namespace FeatureFileFormat {

inline const QLatin1String ATTRIBUTE_ADDRESS("address");
inline const QLatin1String ATTRIBUTE_FROM("from");
inline const QLatin1String ATTRIBUTE_LEN("len");
inline const QLatin1String ATTRIBUTE_NAME("name");
inline const QLatin1String ATTRIBUTE_REG("reg");
inline const QLatin1String ATTRIBUTE_TO("to");
inline const QLatin1String ATTRIBUTE_VARIABLES("variables");
inline const QLatin1String ATTRIBUTE_VERSION("version");

inline const QLatin1String ELEMENT_BOARD_TYPE("BoardDeviceType");
inline const QLatin1String ELEMENT_COMPLEX_FEATURE("ComplexFeature");
inline const QLatin1String ELEMENT_FEATURES("Features");
inline const QLatin1String ELEMENT_MODEL("DeviceModelName");
inline const QLatin1String ELEMENT_NAME("Name");
inline const QLatin1String ELEMENT_TYPE("Type");
inline const QLatin1String ELEMENT_VALUE("Value");

inline const QLatin1String XML_DECLARATION("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n");
inline const QLatin1String FILE_BEGIN("<FeaturesFile version=\"%1\">\r\n");
inline const QLatin1String FILE_END("</FeaturesFile>");
inline const QLatin1String HEADER("<%1>%2</%1>\r\n");
inline const QLatin1String FEATURES_BEGIN("<Features>\r\n");
inline const QLatin1String FEATURES_END("</Features>\r\n");
inline const QLatin1String FEATURE("<Feature>\r\n<Name>%1</Name>\r\n<Type>%2</Type>\r\n"
                                   "<Value>%3</Value>\r\n<Streamable>Yes</Streamable>\r\n"
                                   "</Feature>\r\n");
inline const QLatin1String COMPLEX_BEGIN("<ComplexFeature name=\"%1\" len=\"%2\" reg=\"%3\">\r\n");
inline const QLatin1String COMPLEX_END("</ComplexFeature>\r\n");
inline const QLatin1String REG_VALUE("<RegValue address=\"%1\" variables=\"%2\">%3</RegValue>\r\n");
inline const QLatin1String REG_VALUE_CONVERTED(
    "<RegValue address=\"%1\" variables=\"%2\" to=\"%4\" from=\"%5\">%3</RegValue>\r\n");

/// One record of a bag: marker, serial number, marker, feature file.
inline const QLatin1String BAG_SERIAL_MARKER("\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n");
inline const QLatin1String BAG_FILE_MARKER("\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\n");
/// Where a host keeps a bag while it collects one.
inline const QLatin1String BAG_TEMP_FILE("/FeatureBagTempFile_%1");

inline const QLatin1String FILE_NAME("%1_%2.vxf");
inline const QLatin1String FILE_FILTER("(*.vxf)");
inline const QLatin1String FILE_SUFFIX("vxf");

constexpr qint64 MAX_FILE_SIZE = 64LL * 1024 * 1024;
constexpr int MAX_ELEMENT_DEPTH = 32;
/// Bytes of the longest register that is saved or restored.
constexpr qint64 MAX_REGISTER_LENGTH = 0x100000;

} // namespace FeatureFileFormat
