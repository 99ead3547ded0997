#include "core/recognition/pattern_recognizer.hpp"
#include "core/recognition/predefined/predefined.hpp"
#include "core/text/lexicon.hpp"

namespace core::text::lexicon_data {
extern const std::string_view generic_institutions;
}  // namespace core::text::lexicon_data

namespace core::recognition {
namespace {

using text::Regex;
namespace entity_type = anonymization::entity_type;

// Protocols, formats and ciphers, in any letter case. Words of the language that are
// protocols as well (rest, can) are left out.
const std::vector<std::u32string> PROTOCOLS = {U"HTTP",       U"HTTPS",
                                               U"HTTP/1.1",   U"HTTP/2",
                                               U"HTTP/3",     U"TCP",
                                               U"TCP/IP",     U"UDP",
                                               U"FTP",        U"FTPS",
                                               U"SFTP",       U"SSH",
                                               U"SSL",        U"TLS",
                                               U"TLS 1.2",    U"TLS1.2",
                                               U"TLS 1.3",    U"TLS1.3",
                                               U"SMTP",       U"POP3",
                                               U"IMAP",       U"IMAP4",
                                               U"DNS",        U"DNSSEC",
                                               U"DHCP",       U"SNMP",
                                               U"SNMPv3",     U"MQTT",
                                               U"CoAP",       U"AMQP",
                                               U"WebSocket",  U"WebSockets",
                                               U"gRPC",       U"RESTful",
                                               U"REST API",   U"SOAP",
                                               U"GraphQL",    U"JSON",
                                               U"XML",        U"YAML",
                                               U"OAuth",      U"OAuth 2.0",
                                               U"OAuth2",     U"OAuth2.0",
                                               U"OpenID",     U"OpenID Connect",
                                               U"OIDC",       U"SAML",
                                               U"SAML 2.0",   U"LDAP",
                                               U"LDAPS",      U"Kerberos",
                                               U"JWT",        U"IPsec",
                                               U"IPv4",       U"IPv6",
                                               U"ICMP",       U"BGP",
                                               U"OSPF",       U"VPN",
                                               U"VLAN",       U"NTP",
                                               U"RTP",        U"RTSP",
                                               U"RTMP",       U"WebRTC",
                                               U"Modbus",     U"Modbus TCP",
                                               U"Modbus RTU", U"Modbus/TCP",
                                               U"OPC UA",     U"CANopen",
                                               U"PROFINET",   U"PROFIBUS",
                                               U"EtherCAT",   U"EtherNet/IP",
                                               U"BACnet",     U"KNX",
                                               U"ZigBee",     U"Bluetooth",
                                               U"Wi-Fi",      U"WiFi",
                                               U"Wi-Fi 6",    U"LoRa",
                                               U"LoRaWAN",    U"NB-IoT",
                                               U"NFC",        U"RFID",
                                               U"RS-232",     U"RS-485",
                                               U"RS-422",     U"RS232",
                                               U"RS485",      U"GB28181",
                                               U"GB/T 28181", U"ONVIF",
                                               U"IEC 61850",  U"IEC 60870-5-104",
                                               U"DL/T 645",   U"JT/T 808",
                                               U"AES",        U"AES-128",
                                               U"AES-256",    U"RSA",
                                               U"RSA-2048",   U"SHA-1",
                                               U"SHA-256",    U"SHA256",
                                               U"SHA-512",    U"MD5",
                                               U"3DES",       U"HMAC",
                                               U"PKI",        U"X.509",
                                               U"WireGuard",  U"OpenVPN",
                                               U"IKEv2",      U"L2TP",
                                               U"PPTP",       U"S/MIME",
                                               U"DKIM",       U"DMARC",
                                               U"EDIFACT",    U"EDI",
                                               U"AS2",        U"DICOM",
                                               U"HL7",        U"FHIR",
                                               U"iSCSI",      U"NFS",
                                               U"SMB",        U"WebDAV"};

// 《北境长歌》 with a word such as 手游 near. Not 《游戏运营合作协议》, not a law.
const Regex RE_GAME_TITLE(
    "RE_GAME_TITLE",
    UR"(《([^《》\n\t]{1,30})(?<!合同|协议|[法典函证书约例定知准范则度见单告款表])》)");

}  // namespace

void add_shield_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<PatternRecognizer>(
      PatternRecognizerConfig{.name = "ProtocolRecognizer",
                              .entity = std::string(entity_type::IT_PROTOCOL),
                              .deny_list = PROTOCOLS,
                              .deny_list_score = 0.85}));
  registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
      .name = "GenericInstitutionRecognizer",
      .entity = std::string(entity_type::GENERIC_INSTITUTION_NOUN),
      .deny_list = text::lexicon_words(text::lexicon_data::generic_institutions),
      .deny_list_score = 0.5}));
}

void add_game_recognizers(RecognizerRegistry& registry) {
  registry.add_recognizer(std::make_shared<PatternRecognizer>(PatternRecognizerConfig{
      .name = "GameRecognizer",
      .entity = std::string(entity_type::GAME),
      .patterns = {{"title", &RE_GAME_TITLE, 0.05, {}}},
      .context = {U"游戏", U"手游", U"网游", U"端游", U"页游", U"电竞", U"玩家", U"game", U"games"},
      .context_after = 16}));
}

}  // namespace core::recognition
