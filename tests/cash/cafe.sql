insert into utilisateur(login, mot_pase, nom, role) values ('10', '1', 'Amrani', 'Admin'), ('32', '2', 'Cherif', 'User');
insert into type(code, Type_Produit) values (1, 'Boissons'), (2, 'Plats');
insert into article(code_barre, designation_article, id_categorie, prix_vente) values
  ('1', 'Café', 1, 100), ('2', 'Plat', 2, 400);
insert into Table_(ID_table, "table", etat, control) values (1, 'T1', 'ON', 'open'), (2, 'T2', 'OFF', 'open');
insert into caisse(ID_caise, nom_caisse, solde, general, "select") values
  ('C001', 'Comptoir', 12000, 'NON', 'OUI'), ('C002', 'Terrasse', 700.4, 'NON', 'OUI'),
  ('C003', 'Maison', 5000, 'OUI', 'OUI');
insert into commande(n_commande, etat_commande, HT, TVA, remi, tcc, login, date_commande, id_caisse, en_caisser) values
  (1, 'Terminer', 800, 0, 0, 800, '10', '2024-07-13 09:00:00.000', 'C001', 'yes'),
  (2, 'Terminer', 500, 95, 45, 550, '10', '2024-07-14 08:10:00.500', 'C001', 'no'),
  (3, 'Terminer', 400, 76, 0, 476, '32', '2024-07-14 09:20:00.000', 'C002', 'no'),
  (4, 'Encours', 100, 0, 0, 100, '10', '2024-07-14 10:00:00.000', 'C001', 'no'),
  (5, 'Terminer', 100, 19, 0, 119, '32', '2024-07-14 11:00:00.000', 'C001', 'no');
insert into relation_commande(n_commande, code_article, article, qte, prix, total) values
  (1, '2', 'Plat', 2, 400, 800), (2, '1', 'Café', 1, 100, 100), (2, '2', 'Plat', 1, 400, 400),
  (3, '2', 'Plat', 1, 400, 400), (4, '1', 'Café', 1, 100, 100), (5, '1', 'Café', 1, 100, 100);
insert into depence(ID_depence, date_depense, type_depnce, montant_dep, id_caisse) values
  (7, '2024-07-14 09:00:00.000', 'Autres', 300, 'C002'), (8, '2024-07-14 09:30:00.000', 'Autres', 9000, 'C003');
