mr_test(platform_xml_test
  LIBRARIES mr_platform
  SOURCES
    platform/xml/xmlDocumentTest.cpp
    platform/xml/xmlParserTest.cpp
    platform/xml/xmlUtilsTest.cpp
    platform/xml/xmlWriterTest.cpp)
